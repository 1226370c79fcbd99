#include "shell/KorDSMMainDialog.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "controls/KorTabCtrl.h"
#include "controls/TabStops.h"
#include "model/KorDSMDialogFactory.h"
#include "services/CKorHelp.h"
#include "session/KorDSMItemPath.h"
#include "shell/KorDSMUndoStrip.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

KorDSMMainDialog::KorDSMMainDialog(QWidget* parent)
    : QDialog(parent), m_structure(KorDSMDialogFactory::getDSMDataStructure()),
      m_images(std::make_shared<KorImageList>()) {
    KorReadable::keep(this);
}

KorDSMMainDialog::~KorDSMMainDialog() {
    disconnect(qApp, nullptr, this, nullptr); // the focus still moves while the widgets go
    m_recovery.settle();
    if (m_ready) {
        m_memory.writeSetting();
        leave();
    }
    m_ready = false;
    m_handleSelection = false;
    m_structure.setUseFullExpand(m_structure.getUseFullExpand());
    for (SectionSlot& section : m_slots)
        section.tree.reset();
    m_pages.clear();
    m_itemSource.release();
}

int KorDSMMainDialog::OnInitDialog() {
    KorDSMDataStructure::m_bApplyWasPressed = false;
    KorDSMRecovery::writeDown(&KorDSMMainDialog::showReportsSoon);
    beginTurn();
    setUpImages();
    setUpSections();
    setUpStrips();
    setUpKeys();
    setUpStatus();
    setUpButtons();

    QElapsedTimer timer;
    timer.start();
    m_pages.createPages(this);
    writeTiming("KorDSMMainDialog::createPages", timer.elapsed());

    if (m_structure.getUpdateStatus() == KorDSMDataStructure::kKeepContent)
        setModified(true);
    else
        m_apply->setEnabled(false);
    m_sections->setCheck(0, m_structure.getShowFullTree());
    m_sections->setCheck(1, m_structure.getUseFullExpand());
    m_sections->setCheck(2, m_structure.getShowWarning());

    timer.restart();
    for (const eViewSections section : KorDSMDefines::kLoadingOrder)
        fillSourceCombo(section);
    writeTiming("KorDSMMainDialog::OnInitDialog", timer.elapsed());

    m_ready = true;
    updateCommandStates();
    showSection(true);
    setUpTexts();
    setUpTabOrder();
    m_sections->buttonGroup()->setCheckedButton(
        m_sections->buttonGroup()->buttonId(m_structure.getSelectedSection()));
    constexpr int kSplitter = 1096;
    m_memory.registerControl(kSplitter, MemoryDlg::eStretchY);
    m_memory.setWindow(this);
    m_memory.restore();
    return 1;
}

void KorDSMMainDialog::onMessage(const KorMessage& message) {
    switch (message.number) {
    case DsmDeleteEntry::kNumber: {
        const auto entry = static_cast<const DsmDeleteEntry&>(message).entry;
        if (KorDSMSectionTree* shown = treeOf(entry))
            shown->deleteEntry(entry);
        postItemsChanged();
        break;
    }
    case DsmInsertPlaceholder::kNumber: {
        const auto entry = static_cast<const DsmInsertPlaceholder&>(message).entry;
        if (KorDSMSectionTree* shown = treeOf(entry))
            shown->showPlaceholder(entry);
        postItemsChanged();
        break;
    }
    case DsmCollapseEntry::kNumber: {
        const auto entry = static_cast<const DsmCollapseEntry&>(message).entry;
        if (KorDSMSectionTree* shown = treeOf(entry))
            shown->control()->collapse(entry);
        break;
    }
    case DsmSetEntryText::kNumber: {
        const auto& text = static_cast<const DsmSetEntryText&>(message);
        if (KorDSMSectionTree* shown = treeOf(text.entry))
            shown->control()->setItemText(text.entry, text.text);
        postItemsChanged();
        break;
    }
    case DsmAttachItemData::kNumber: {
        const auto& attach = static_cast<const DsmAttachItemData&>(message);
        if (KorDSMSectionTree* shown = attach.data ? treeOf(attach.entry) : nullptr)
            shown->attach(attach.entry, std::move(attach.data));
        break;
    }
    case DsmGoToChild::kNumber: {
        const auto& goTo = static_cast<const DsmGoToChild&>(message);
        KorTreeCtrl* control = currentTree().control();
        control->expand(goTo.entry);
        KorTreeHandle child = control->getChildItem(goTo.entry);
        for (int i = 0; child && i < goTo.childIndex; ++i)
            child = control->getNextSiblingItem(child);
        if (child)
            selectEntry(child);
        break;
    }
    case DsmProgress::kNumber:
        showProgress(static_cast<const DsmProgress&>(message));
        break;
    case DsmDataChanged::kNumber:
        setModified(true);
        break;
    case DsmSetModified::kNumber:
        setModified(static_cast<const DsmSetModified&>(message).modified);
        break;
    case DsmMarkOtherPages::kNumber: {
        const bool modified = static_cast<const DsmMarkOtherPages&>(message).modified;
        TabContent* group = m_tabs->currentContent();
        for (int i = 0; group && i < group->pageCount(); ++i) {
            auto* page = qobject_cast<KorDSMPage*>(group->page(i));
            if (!page || i == group->currentIndex())
                continue;
            page->requestRefresh(modified);
        }
        break;
    }
    case DsmSetOptionCheck::kNumber: {
        const auto& option = static_cast<const DsmSetOptionCheck&>(message);
        m_sections->setCheck(option.index, option.value);
        break;
    }
    case DsmReportWaits::kNumber:
        showReports();
        break;
    default:
        break;
    }
}

KorDSMSectionTree* KorDSMMainDialog::treeOf(KorTreeHandle entry) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    const KorDsmSectionItem* section = item ? KorDSMItemPath::sectionOf(*item) : nullptr;
    return section ? &tree(section->m_Section) : nullptr;
}

void KorDSMMainDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        CKorHelp::showTopic("_korDisplayDetailStyles");
        return;
    }
    if (event->key() == Qt::Key_Escape && (clearFilter() || !mayEscape()))
        return;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_filter->hasFocus() && (isReturn || event->key() == Qt::Key_Down))
        return whenFree([this] { goToFirstMatch(); });
    // Return commits the field that has the focus; it never presses a button of the window.
    if (isReturn && !qobject_cast<QPushButton*>(QApplication::focusWidget()))
        return;
    QDialog::keyPressEvent(event);
}

bool KorDSMMainDialog::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && m_ready)
        QTimer::singleShot(0, this, waiting(&KorDSMMainDialog::lookAround));
    return QDialog::event(event);
}

bool KorDSMMainDialog::focusNextPrevChild(bool next) {
    return TabStops::step(m_tabOrder, next);
}

// When the user comes back to the window: what others changed meanwhile, and what went wrong.
void KorDSMMainDialog::lookAround() {
    const QWidget* modal = QApplication::activeModalWidget();
    if (!isVisible() || (modal && modal != this))
        return;
    takeOver();
    offerRecovery();
    m_recovery.settle();
    readOutsideChanges();
    showReports();
}

void KorDSMMainDialog::setModified(bool modified) {
    m_apply->setEnabled(modified);
    m_undoStrip->update();
    markPages();
    m_structure.setUpdateStatus(KorDSMDataStructure::kReloadRequested);
}

// The tabs of pages that show something that is not stored yet.
void KorDSMMainDialog::markPages() {
    TabContent* group = m_tabs->currentContent();
    for (int i = 0; group && i < group->pageCount(); ++i)
        if (auto* page = qobject_cast<KorDSMPage*>(group->page(i)))
            page->updateMark();
}

void KorDSMMainDialog::showProgress(const DsmProgress& progress) {
    m_progress->setVisible(progress.state == DsmProgress::kStep);
    m_progressText->setVisible(progress.state == DsmProgress::kStep);
    m_status->setVisible(progress.state != DsmProgress::kStep);
    if (progress.state != DsmProgress::kStep)
        return;
    m_progress->setRange(0, progress.range);
    m_progress->setValue(progress.percent);
    m_progressText->setText(toQt(progress.text));
    // The bar repaints while the work goes on; what the user does meanwhile waits.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
