#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/KorTabCtrl.h"
#include "controls/VELComboTree.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QPushButton>

// Several editor windows beside each other: which one shows the data structure.

namespace {

// In the order of their turns; the last one has the data structure, unless it was released.
std::vector<KorDSMMainDialog*> g_open;

} // namespace

void KorDSMMainDialog::releaseDataStructure() {
    if (!g_open.empty() && KorDSMMainWindow::get() == g_open.back())
        g_open.back()->letGo();
}

void KorDSMMainDialog::beginTurn() {
    releaseDataStructure();
    std::erase(g_open, this);
    g_open.push_back(this);
    KorDSMMainWindow::add(this);
    KorDSMGuardedWrite::addAskFunction(this, [this](eTableType table, const KorOdbcKey& key) {
        return KorDSMDialogConfirmation::ask(table, key, this);
    });
}

void KorDSMMainDialog::letGo() {
    m_tabs->finishCurrentPage();
    m_tabs->setCurrentContent(nullptr);
    forgetFilter();
    m_handleSelection = false;
    for (SectionSlot& section : m_slots) {
        section.tree->clear();
        section.combo->deleteAll();
        section.sources.clear();
    }
    m_handleSelection = true;
    m_list->setItems({});
    m_currentEntry = nullptr;
    showStatus();
    m_itemSource.release();
    KorDSMGuardedWrite::removeAskFunction(this);
    KorDSMMainWindow::remove(this);
}

void KorDSMMainDialog::leave() {
    if (KorDSMMainWindow::get() == this) {
        // What was to be kept has been taken by now; the rest must not come back as a pending change.
        if (KorDSMPage* page = KorDSMPage::currentPage())
            page->dropEdits();
        letGo();
    }
    std::erase(g_open, this);
    const auto next =
        std::find_if(g_open.rbegin(), g_open.rend(), [](const auto* open) { return open->isVisible(); });
    if (next != g_open.rend())
        (*next)->takeOver();
}

void KorDSMMainDialog::done(int result) {
    QDialog::done(result);
    if (m_ready)
        leave();
}

void KorDSMMainDialog::takeOver() {
    if (KorDSMMainWindow::get() == this)
        return;
    beginTurn();
    // What is pending or was dropped meanwhile changed items and lists.
    m_pages.requestInit();
    const auto status = m_structure.getUpdateStatus();
    if (status == KorDSMDataStructure::kReloadRequested || status == KorDSMDataStructure::kEmptied) {
        reloadSections();
    } else {
        for (const eViewSections section : KorDSMDefines::kLoadingOrder)
            fillSourceCombo(section);
        showSection(true);
    }
    m_sections->buttonGroup()->setCheckedButton(
        m_sections->buttonGroup()->buttonId(m_structure.getSelectedSection()));
    m_apply->setEnabled(KorDSMCommit::isAnythingPending());
    m_undoStrip->update();
}
