#include "controls/KorTabCtrl.h"
#include "services/CKorHelp.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QPushButton>

// The commands of the main dialog.

void KorDSMMainDialog::onItemCommand(int id) {
    switch (id) {
    case 1029:
        newItem();
        break;
    case 1030:
        use();
        break;
    case 1033:
        copyItem();
        break;
    case 1034:
        renameItem();
        break;
    case 1035:
        deleteItems();
        break;
    case 1039:
        importStyles();
        break;
    case 1037:
        exportStyle();
        break;
    case 1036:
        CKorHelp::showTopic("_Drawing_Style_Manager");
        break;
    default:
        break;
    }
}

void KorDSMMainDialog::finishCurrentPage() {
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->finishEditing();
}

void KorDSMMainDialog::apply() {
    const KorDSMBusy busy;
    finishCurrentPage();
    if (!readOutsideChanges())
        return;
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndGoOn();
    m_undoStrip->update();
    markPages();
    if (outcome.ok())
        m_apply->setEnabled(false);
    else
        reportCommit(outcome);
}
