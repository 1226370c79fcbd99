#include "shell/TypedText.h"

#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "pages/KorDSMPage.h"

#include <QApplication>

#include <algorithm>

bool TypedText::canBeKept() {
    const KorDSMPage* page = KorDSMPage::currentPage();
    if (QApplication::activePopupWidget() || QApplication::mouseButtons() != Qt::NoButton)
        return false;
    if (!page)
        return true;
    const auto grids = page->findChildren<KorMFCGridCtrl*>();
    const auto fields = page->findChildren<KorLineEdit*>();
    return !page->hasEditedParts() && std::ranges::none_of(grids, &KorMFCGridCtrl::isEditing) &&
           std::ranges::count_if(fields, &KorLineEdit::isEdited) <= 1;
}

RowRef TypedText::recordOf(const KorDSMPage& page) {
    const auto* item = page.getData() ? page.getData().as<KorDSMDatabaseItem>() : nullptr;
    return item && item->record() ? RowRef{item->tableType(), item->recordKey()} : RowRef();
}

TypedText::TypedText() : m_page(KorDSMPage::currentPage()) {
    if (!m_page)
        return;
    m_record = recordOf(*m_page);
    for (KorLineEdit* field : m_page->findChildren<KorLineEdit*>())
        if (field->isEdited()) {
            m_field = field;
            m_text = field->text();
            m_cursor = field->cursorPosition();
            field->restore();
        }
}

TypedText::~TypedText() {
    m_focus.reset();
    const bool isSame = m_page && KorDSMPage::currentPage() == m_page && recordOf(*m_page) == m_record;
    if (!isSame || !m_field || !m_field->isEnabled() || m_field->isReadOnly())
        return;
    m_field->selectAll();
    m_field->insert(m_text); // as typed by the user
    m_field->setCursorPosition(m_cursor);
}
