#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "model/KorDSMDialogFactory.h"
#include "services/Prompts.h"
#include "session/KorDSMHandOver.h"
#include "session/KorDSMUndo.h"
#include "shell/KorDSMMainDialog.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTextDocument>

#include <limits>

// The ways out of the window, and what becomes of the changes that are not stored then.

namespace {

constexpr int kLeavingCaption = 420;
constexpr int kOneChange = 421;
constexpr int kChanges = 422; // "%d changes are not stored yet. ..."
constexpr int kKeepChanges = 423;
constexpr int kDropChanges = 424;
constexpr int kGoOnEditing = 425;

constexpr std::size_t kMostShown = 6;

// The latest first, as the undo menu lists them.
QString listOf(const std::vector<KorString>& steps, std::size_t most) {
    QStringList lines;
    for (std::size_t i = 0; i < steps.size() && i < most; ++i)
        lines << toQt(steps[i]);
    if (steps.size() > most)
        lines << QStringLiteral("…");
    return lines.join('\n');
}

bool somethingIsPending() {
    return !StyleDatabases::current().pending().isEmpty();
}

} // namespace

KorDSMMainDialog::eLeaving KorDSMMainDialog::askBeforeLeaving() {
    if (!KorDSMDialogFactory::asksBeforeLeaving || !somethingIsPending())
        return eLeaving::kNotAsked;
    const std::vector<KorString> steps = KorDSMUndo::undoSteps(std::numeric_limits<std::size_t>::max());
    const KorString number = KorString::number(static_cast<std::int64_t>(steps.size()));
    QMessageBox box(QMessageBox::Question, toQt(Prompts::dsm(kLeavingCaption)),
                    toQt(steps.size() == 1 ? Prompts::dsm(kOneChange)
                                           : KorString::format(Prompts::dsm(kChanges), {number})),
                    QMessageBox::NoButton, this);
    box.setInformativeText(Qt::convertFromPlainText(listOf(steps, kMostShown), Qt::WhiteSpaceNormal));
    if (steps.size() > kMostShown)
        box.setDetailedText(listOf(steps, steps.size()));
    QPushButton* keep = box.addButton(toQt(Prompts::dsm(kKeepChanges)), QMessageBox::AcceptRole);
    const QPushButton* drop = box.addButton(toQt(Prompts::dsm(kDropChanges)), QMessageBox::DestructiveRole);
    QPushButton* goOn = box.addButton(toQt(Prompts::dsm(kGoOnEditing)), QMessageBox::RejectRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(goOn);
    box.exec();
    if (box.clickedButton() == keep)
        return eLeaving::kKeep;
    return box.clickedButton() == drop ? eLeaving::kDrop : eLeaving::kGoOn;
}

bool KorDSMMainDialog::keepBeforeLeaving() {
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndClose(m_apply->isEnabled());
    if (!outcome.ok())
        reportCommit(outcome);
    return outcome.ok();
}

void KorDSMMainDialog::accept() {
    if (KorDSMBusy::isBusy())
        return whenFree([this] { accept(); });
    finishCurrentPage();
    if (keepBeforeLeaving())
        QDialog::accept();
}

void KorDSMMainDialog::reject() {
    if (KorDSMBusy::isBusy())
        return whenFree([this] { reject(); });
    // Whoever is asked is asked about what is still being typed too.
    if (KorDSMDialogFactory::asksBeforeLeaving)
        finishCurrentPage();
    switch (askBeforeLeaving()) {
    case eLeaving::kKeep:
        if (keepBeforeLeaving())
            QDialog::accept();
        return;
    case eLeaving::kGoOn:
        return;
    case eLeaving::kDrop:
    case eLeaving::kNotAsked:
        break;
    }
    KorDSMCommit::discard();
    QDialog::reject();
}

void KorDSMMainDialog::use() {
    m_tabs->finishCurrentPage();
    KorDSMDatabaseItem* item = currentItem();
    if (!item)
        return;
    const eLeaving leaving = askBeforeLeaving();
    switch (leaving) {
    case eLeaving::kKeep:
        if (!keepBeforeLeaving())
            return;
        break;
    case eLeaving::kDrop:
        KorDSMCommit::discard(); // a style that was only pending is not found by the hand-over then
        break;
    case eLeaving::kGoOn:
        return;
    case eLeaving::kNotAsked:
        break;
    }
    selectItemDatabase(item);
    KorDSMHandOver::put(item);
    if (leaving == eLeaving::kNotAsked &&
        m_structure.getUpdateStatus() == KorDSMDataStructure::kReloadRequested)
        m_structure.setUpdateStatus(KorDSMDataStructure::kKeepContent);
    done(QDialog::Accepted);
}

void KorDSMMainDialog::closeEvent(QCloseEvent* event) {
    // Closing by the window's button counts as Cancel.
    reject();
    event->setAccepted(!isVisible());
}

bool KorDSMMainDialog::mayEscape() const {
    return !m_apply->isEnabled() && !somethingIsPending();
}
