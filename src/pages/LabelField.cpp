#include "pages/LabelField.h"

#include "controls/KorFieldNote.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "operations/CurrentRows.h"
#include "pages/LabelDesignerSetup.h"
#include "records/AnnotationLook.h"

LabelField::LabelField(KorDSMPage& page, VELLabelDesignerCtrlWrap& designer, int column, int objectType)
    : PagePart(&page), m_page(page), m_designer(designer), m_column(column) {
    LabelDesignerSetup::apply(designer, objectType);
    KorFieldNote::prepare(&designer);
    connect(&designer, &VELLabelDesignerCtrlWrap::changed, this, [this] {
        m_edited = true;
        if (isEdited())
            m_page.notifyModified();
        else
            m_page.notifyTyping(); // it is as it was again
    });
}

ShownColumns LabelField::shownColumns() const {
    const auto& item = *m_page.getData().as<KorDSMDatabaseItem>();
    return {item.tableType(), KorOdbcKey(item.recordKey()), {m_column}};
}

std::optional<FieldPlace> LabelField::placeOf(const QWidget& control) const {
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    if (&control != &m_designer || !item || !item->record())
        return std::nullopt;
    FieldPlace place{{item->tableType(), item->recordKey()}, m_column};
    if (isEdited())
        place.typed = m_designer.GetString();
    return place;
}

QWidget* LabelField::bringUp(RowRef row, int column) {
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    const bool isHere = item && row == RowRef{item->tableType(), item->recordKey()} && column == m_column;
    return isHere ? &m_designer : nullptr;
}

CellValue LabelField::stored() const {
    const auto& item = *m_page.getData().as<KorDSMDatabaseItem>();
    return findTable(item.tableType())->column(m_column)->read(item.record());
}

// Contents of annotations are drawn as their type says, titles by the defaults of the source.
void LabelField::showDefaults() {
    LabelDesignerSetup::applySource(m_designer);
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    if (!item || !item->record() || item->tableType() != kTableAnnotationStrategy)
        return;
    const auto& strategy = static_cast<const StructDetObjAnnotationStrategy&>(*item->record());
    LabelDesignerSetup::applyStyle(
        m_designer, labelStyleOf(static_cast<const StructDetAnnotationType*>(
                        CurrentRows::find(kTableAnnotationType, KorOdbcKey(strategy.annotationTypeKey)))));
}

void LabelField::load() {
    showDefaults();
    m_designer.SetString(std::get<KorString>(stored()));
}

void LabelField::enable() {
    m_designer.setEnabled(true);
    m_designer.Enable(m_page.isEditable());
}

bool LabelField::isEdited() const {
    return m_edited && m_page.getData() && CellValue(m_designer.GetString()) != stored();
}

void LabelField::store(bool discard) {
    const bool write = !discard && isEdited();
    m_edited = false;
    if (write && !m_page.writeFrom(&m_designer, m_column, m_designer.GetString()))
        m_page.notifyTyping(); // there may be nothing to apply any more
}
