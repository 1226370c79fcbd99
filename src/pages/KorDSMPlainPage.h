#pragma once

#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"

class LabelField;
class PartListEditor;
class RecordButtons;
class QFormLayout;
class QLabel;

/// What a plain page shows. Data only: a page that gets controls of its own takes the row's place.
struct PlainPageDescription {
    int code = 0; ///< the page's item-type code
    int templateId = 0;
    int titlePrompt = 0;
    /// The column by which an item's record refers to the record that the page edits; 0: the item's own.
    int viaColumn = 0;
    std::vector<int> columns = {};    ///< the columns shown; empty: all but the name
    std::vector<int> labels = {};     ///< those of the item's own record that hold labels
    std::vector<int> ownColumns = {}; ///< with `viaColumn`: columns of the item's own record, edited above it
};

/// A page made from the declaration of a table: a field for each column of the record, with captions,
/// references by name, values by their names; below them the record's parts as lists. Where the record is
/// filed is shown only: that is changed in the tree.
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
    void OnShow(int show) override;
    bool fillLists() override;
    bool loadData() override;
    void enableControls() override;
    void storePendingChanges(bool discard) override;
    std::vector<ShownColumns> shownColumns() const override;

private:
    struct Caption {
        QLabel* label;
        const TableSchema* table;
        const Column* column;
    };

    const TableSchema& itemTable() const { return *findTable(item()->tableType()); }
    /// The table of the record that the page edits.
    const TableSchema& shownTable() const;
    PageFields::Row shownRow() const;
    const StructRecord* shownRecord() const;
    void build();
    QFormLayout* makeForm() const;
    /// Numbers of the columns of the item's own record, where the page edits another one.
    std::vector<int> columnsOfItem() const;
    std::vector<const Column*> columnsOfRecord() const;
    void addOwnColumns();
    void addColumns();
    void addValue(const TableSchema& table, const Column& column);
    void addLabel(const TableSchema& table, const Column& column, int control);
    void addField(const TableSchema& table, const Column& column, int control);
    QWidget* withButtons(QWidget* field, const TableSchema& table, const Column& column);
    PageFields* makeFields(std::vector<PageField> fields, bool ofItem);
    void onWritten(int column);

    PlainPageDescription m_description;
    const TableSchema* m_table = nullptr; // for which the fields were made
    QWidget* m_body = nullptr;
    PageFields* m_own = nullptr; // of the item's record, with the choice of the one that the page edits
    PageFields* m_fields = nullptr;
    QFormLayout* m_form = nullptr;   // that is being filled
    QWidget* m_record = nullptr;     // holds the columns of the record
    std::vector<Caption> m_captions; // of the fields
    std::vector<Caption> m_values;   // of what is only shown: the label takes the value
    std::vector<LabelField*> m_labels;
    std::vector<PartListEditor*> m_parts;
    std::vector<RecordButtons*> m_records; // beside the choices of records that users make
};
