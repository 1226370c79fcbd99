#pragma once

#include "pages/KorDSMPage.h"

class QFormLayout;
class QLabel;

/// What a plain page shows. Data only: a page that gets controls of its own takes the row's place.
struct PlainPageDescription {
    int code = 0;       ///< the page's item-type code
    int templateId = 0;
    int titlePrompt = 0;
    /// Table of the record shown, and the column of the item's record that refers to it; 0: the item's own.
    eTableType table = kNoTable;
    int viaColumn = 0;
    std::vector<int> columns; ///< the columns shown; empty: all but the name
};

/// A page made from the declaration of a table: it shows the columns of a record for reading, with captions,
/// values as a user reads them, and references by name; below them the record's parts.
class KorDSMPlainPage : public KorDSMPage {
    Q_OBJECT

public:
    KorDSMPlainPage(QWidget* parent, const PlainPageDescription& description);

    /// Whether the template stands for a plain page, which needs no form.
    static bool isPlainTemplate(int templateId);
    /// All plain pages, by template number.
    static const std::vector<PlainPageDescription>& descriptions();
    static KorDSMPage* make(QWidget* parent, int templateId);

    bool OnInitDialog() override;
    bool loadData() override;
    /// Nothing here can be edited, and values stay readable and selectable in every source.
    void enableControls() override {}

private:
    struct Place {
        const TableSchema* table = nullptr;
        const StructRecord* record = nullptr;
    };

    Place shownRecord() const;
    void showColumns(const Place& place);
    void showParts(const Place& place);
    void addValue(const KorString& caption, const KorString& value);

    PlainPageDescription m_description;
    QWidget* m_body = nullptr;
    QFormLayout* m_form = nullptr;
};
