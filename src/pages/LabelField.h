#pragma once

#include "pages/KorDSMPage.h"
#include "pages/PagePart.h"

class VELLabelDesignerCtrlWrap;

/// A label designer that shows and writes a text column of a page's record. What was edited is written when
/// the page is left, once and only when it differs from what is stored.
class LabelField : public PagePart {
    Q_OBJECT

public:
    /// `page` and `designer` are not owned. `objectType` decides which variables are offered.
    LabelField(KorDSMPage& page, VELLabelDesignerCtrlWrap& designer, int column, int objectType);

    /// Shows what is stored.
    void load();
    /// Brings the look of texts that say nothing else in line with what the record chooses.
    void showDefaults();
    /// Brings the designer to the state of the page: what cannot be changed can still be read and copied.
    void enable();
    /// Writes what was edited, or drops it.
    void store(bool discard);
    /// What was edited so far counts as seen.
    void forgetEdits() { m_edited = false; }
    /// Whether there is something that `store` would write.
    bool isEdited() const override;
    ShownColumns shownColumns() const override;
    std::optional<FieldPlace> placeOf(const QWidget& control) const override;
    QWidget* bringUp(RowRef row, int column) override;

private:
    CellValue stored() const;

    KorDSMPage& m_page;
    VELLabelDesignerCtrlWrap& m_designer;
    int m_column;
    bool m_edited = false;
};
