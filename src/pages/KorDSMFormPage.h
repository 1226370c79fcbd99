#pragma once

#include "pages/FormTable.h"
#include "pages/KorDSMPage.h"

class FormBody;
class PartListEditor;

/// Base of the pages that consist of a form and of the lists of what is part of their record.
class KorDSMFormPage : public KorDSMPage {
    Q_OBJECT

public:
    /// `form` must outlive the page.
    KorDSMFormPage(QWidget* parent, const FormTable& form);

    bool OnInitDialog() override;
    void OnShow(int show) override;
    bool fillLists() override;
    bool refreshLists() override { return fillLists(); }
    bool loadData() override;
    void enableControls() override;
    void storePendingChanges(bool discard) override;
    std::vector<ShownColumns> shownColumns() const override;

private:
    void build();
    bool isFor(eTableType table) const;
    RowRef selectedPart(eTableType parts) const;

    const FormTable& m_form;
    eTableType m_table = kNoTable; // for which the form was made
    QWidget* m_content = nullptr;
    FormBody* m_body = nullptr;
    std::vector<std::pair<eTableType, PartListEditor*>> m_lists;
};
