#include "shell/KorDSMMainDialog.h"

#include "controls/KorControls.h"
#include "controls/KorMnemonics.h"
#include "controls/KorReadable.h"
#include "controls/KorVerticalSplitter.h"
#include "controls/TabStops.h"
#include "model/KorDSMDialogFactory.h"
#include "services/CKorHelp.h"
#include "services/KorOutputDebugString.h"
#include "session/KorDSMRecovery.h"
#include "shell/CommandHelp.h"
#include "shell/WhenFree.h"
#include "shell/WindowParts.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>

using namespace KorDSMDefines;

namespace {

void writeTiming(const char* label, qint64 milliseconds) {
    char line[128];
    const std::string text = KorString::format("%s lasted: ", {label}).toStdString();
    std::snprintf(line, sizeof line, "\n%-50s%d ms", text.c_str(), static_cast<int>(milliseconds));
    KorOutputDebugString(line);
}

} // namespace

KorDSMMainDialog::KorDSMMainDialog(QWidget* parent)
    : QDialog(parent), m_structure(KorDSMDialogFactory::getDSMDataStructure()),
      m_images(std::make_shared<KorImageList>()),
      m_turn(*this, *this, {[this] { letGo(); }, [this] { showStructure(); }}) {
    KorReadable::keep(this);
}

KorDSMMainDialog::~KorDSMMainDialog() {
    if (m_parts) {
        m_memory.writeSetting();
        m_turn.end();
    }
    m_structure.setUseFullExpand(m_structure.getUseFullExpand());
}

int KorDSMMainDialog::OnInitDialog() {
    KorDSMDataStructure::m_bApplyWasPressed = false;
    KorDSMRecovery::writeDown(&KorDSMMainDialog::showReportsSoon);
    m_turn.begin();
    setUpImages();
    m_parts = std::make_unique<WindowParts>(*this, m_structure, m_images,
                                            [this] { return isFree() && m_turn.isMine(); });
    connectSelection();
    connectCommands();
    receiveFromItems();
    receiveFromPages();
    setUpKeys();

    QElapsedTimer timer;
    timer.start();
    m_parts->rightSide.pages().createPages(this);
    m_parts->preview.connectPages();
    writeTiming("KorDSMMainDialog::createPages", timer.elapsed());

    if (m_structure.getUpdateStatus() == KorDSMDataStructure::kKeepContent)
        m_parts->applyState.setModified(true);
    else
        m_parts->applyState.setApplied();
    m_parts->sectionStrip.showOptions();

    timer.restart();
    m_parts->sections.fillCombos();
    writeTiming("KorDSMMainDialog::OnInitDialog", timer.elapsed());

    m_parts->selectionStatus.updateCommands();
    setUpTexts();
    KorMnemonics::give(*this);
    m_parts->navigation.showSection(true);
    setUpTabOrder();
    m_parts->sectionStrip.check(m_structure.getSelectedSection());
    constexpr int kSplitter = 1096;
    KorControls::find<KorVerticalSplitter>(this, kSplitter)->setRightRoom(RightSide::kRoomOfPages);
    m_memory.registerControl(kSplitter, MemoryDlg::eStretchY);
    m_memory.setWindow(this);
    resize(width() + m_parts->preview.wantedWidth(), height());
    m_memory.restore();
    m_parts->sections.currentControl().setFocus();
    m_parts->servers.begin();
    m_parts->ahead.begin();
    return 1;
}

KorDSMPageRegistry& KorDSMMainDialog::pages() {
    return m_parts->rightSide.pages();
}

const KorDSMSelectionHistory& KorDSMMainDialog::history() const {
    return m_parts->navigation.history();
}

KorDSMSectionTree& KorDSMMainDialog::currentTree() {
    return m_parts->sections.currentTree();
}

void KorDSMMainDialog::switchSection(eViewSections section) {
    m_parts->navigation.switchSection(section);
}

void KorDSMMainDialog::letGo() {
    m_parts->rightSide.letGo();
    m_parts->selection.unhide();
    m_parts->filter.clear();
    m_parts->sections.clear();
    m_parts->rightSide.list().clear();
    m_parts->selection.forget();
    m_parts->selection.announce();
    m_parts->selection.release();
}

void KorDSMMainDialog::showStructure() {
    // What is pending or was dropped meanwhile changed items and lists.
    pages().requestInit();
    const auto status = m_structure.getUpdateStatus();
    if (status == KorDSMDataStructure::kReloadRequested || status == KorDSMDataStructure::kEmptied) {
        m_parts->refresh.reload();
    } else {
        m_parts->sections.fillCombos();
        m_parts->navigation.showSection(true);
    }
    m_parts->sectionStrip.check(m_structure.getSelectedSection());
    m_parts->applyState.update();
}

void KorDSMMainDialog::leave(WindowLeaving::eWay way) {
    if (way == WindowLeaving::eWay::kAccept)
        QDialog::accept();
    else if (way == WindowLeaving::eWay::kReject)
        QDialog::reject();
}

void KorDSMMainDialog::accept() {
    if (KorDSMBusy::isBusy())
        return whenFree(this, [this] { accept(); });
    leave(m_parts->leaving.accept());
}

void KorDSMMainDialog::reject() {
    if (KorDSMBusy::isBusy())
        return whenFree(this, [this] { reject(); });
    if (m_parts)
        return leave(m_parts->leaving.reject());
    KorDSMCommit::discard();
    QDialog::reject();
}

void KorDSMMainDialog::use() {
    leave(m_parts->leaving.use());
}

void KorDSMMainDialog::done(int result) {
    QDialog::done(result);
    if (m_parts)
        m_turn.end();
}

void KorDSMMainDialog::closeEvent(QCloseEvent* event) {
    // Closing by the window's button counts as Cancel.
    reject();
    event->setAccepted(!isVisible());
}

void KorDSMMainDialog::keyPressEvent(QKeyEvent* event) {
    if (!m_parts)
        return QDialog::keyPressEvent(event);
    if (event->key() == Qt::Key_F1) {
        if (CommandHelp::show(QApplication::focusWidget()))
            return;
        const QWidget* commands = KorControls::find(this, 1011);
        const bool isAtCommands = commands->isAncestorOf(QApplication::focusWidget()) || commands->hasFocus();
        CKorHelp::showTopic(isAtCommands ? "_Drawing_Style_Manager" : "_korDisplayDetailStyles");
        return;
    }
    NameFilter& filter = m_parts->filter;
    if (event->key() == Qt::Key_Escape && (filter.clear() || !m_parts->leaving.mayEscape()))
        return;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (filter.hasFocus() && (isReturn || event->key() == Qt::Key_Down))
        return whenFree(this, [this] { m_parts->navigation.goToFirstMatch(); });
    // Return commits the field that has the focus; it never presses a button of the window.
    if (isReturn && !qobject_cast<QPushButton*>(QApplication::focusWidget()))
        return;
    QDialog::keyPressEvent(event);
}

bool KorDSMMainDialog::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && m_parts)
        QTimer::singleShot(0, this, waiting(this, &KorDSMMainDialog::lookAround));
    return QDialog::event(event);
}

bool KorDSMMainDialog::focusNextPrevChild(bool next) {
    return TabStops::step(m_tabOrder, next);
}

bool KorDSMMainDialog::isFree() const {
    const QWidget* modal = QApplication::activeModalWidget();
    return isVisible() && (!modal || modal == this);
}

// When the user comes back to the window: what others changed meanwhile, and what went wrong.
void KorDSMMainDialog::lookAround() {
    if (!isFree())
        return;
    m_turn.take();
    m_parts->recovery.look();
    m_parts->reports.readOutsideChanges();
    m_parts->reports.show();
    m_parts->ahead.begin();
}

// What is pending is written down whoever is there: the window that asked for it may be gone.
void KorDSMMainDialog::showReportsSoon() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<KorDSMMainDialog*>(widget);
            window && window->isVisible() && window->m_parts)
            return QTimer::singleShot(
                0, window, [window] { whenFree(window, [window] { window->m_parts->reports.show(); }); });
}
