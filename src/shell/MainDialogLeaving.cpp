#include "controls/KorFieldNote.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "model/KorDSMDialogFactory.h"
#include "services/Prompts.h"
#include "session/KorDSMHandOver.h"
#include "session/KorDSMUndo.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/PendingQuestion.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>

#include <limits>

// The ways out of the window, and what becomes of the changes that are not stored then.

namespace {

constexpr int kLeavingCaption = 420;
constexpr int kOneChange = 421;
constexpr int kChanges = 422; // "%d changes are not stored yet. ..."
constexpr int kKeepChanges = 423;
constexpr int kDropChanges = 424;
constexpr int kGoOnEditing = 425;
constexpr int kFieldNotStored = 413; // "A field shows what is not stored. ..."
constexpr int kLeaveWithoutIt = 414;

} // namespace

KorDSMMainDialog::eLeaving KorDSMMainDialog::askBeforeLeaving() {
    if (!KorDSMDialogFactory::asksBeforeLeaving || !KorDSMCommit::isAnythingPending())
        return eLeaving::kNotAsked;
    const std::vector<KorString> steps = KorDSMUndo::undoSteps(std::numeric_limits<std::size_t>::max());
    const KorString number = KorString::number(static_cast<std::int64_t>(steps.size()));
    const KorString question =
        steps.size() == 1 ? Prompts::dsm(kOneChange) : KorString::format(Prompts::dsm(kChanges), {number});
    constexpr eLeaving kAnswers[] = {eLeaving::kKeep, eLeaving::kDrop, eLeaving::kGoOn};
    return kAnswers[askAboutChanges(this, Prompts::dsm(kLeavingCaption), question, steps,
                                    {kKeepChanges, kDropChanges, kGoOnEditing})];
}

bool KorDSMMainDialog::finishBeforeLeaving() {
    finishCurrentPage();
    const KorDSMPage* page = KorDSMPage::currentPage();
    QWidget* field = page ? KorFieldNote::first(page) : nullptr;
    if (!field || !KorDSMDialogFactory::asksBeforeLeaving)
        return true;
    QMessageBox box(QMessageBox::Question, toQt(Prompts::dsm(kLeavingCaption)),
                    toQt(Prompts::dsm(kFieldNotStored)), QMessageBox::NoButton, this);
    const QString name = field->accessibleName();
    const QString note = KorFieldNote::textOf(field);
    box.setInformativeText(name.isEmpty() ? note : name + QStringLiteral(": ") + note);
    QPushButton* goOn = box.addButton(toQt(Prompts::dsm(kGoOnEditing)), QMessageBox::RejectRole);
    const QPushButton* leave =
        box.addButton(toQt(Prompts::dsm(kLeaveWithoutIt)), QMessageBox::DestructiveRole);
    box.setDefaultButton(goOn);
    box.setEscapeButton(goOn);
    box.exec();
    field->setFocus();
    return box.clickedButton() == leave;
}

bool KorDSMMainDialog::keepBeforeLeaving() {
    if (!readOutsideChanges())
        return false;
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndClose(m_apply->isEnabled());
    if (!outcome.ok())
        reportCommit(outcome);
    return outcome.ok();
}

void KorDSMMainDialog::accept() {
    if (KorDSMBusy::isBusy())
        return whenFree([this] { accept(); });
    if (finishBeforeLeaving() && keepBeforeLeaving())
        QDialog::accept();
}

void KorDSMMainDialog::reject() {
    if (KorDSMBusy::isBusy())
        return whenFree([this] { reject(); });
    // Whoever is asked is asked about what is still being typed too.
    if (KorDSMDialogFactory::asksBeforeLeaving && !finishBeforeLeaving())
        return;
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
    finishCurrentPage();
    KorDSMDatabaseItem* item = subject();
    if (!item)
        return;
    const int key = item->recordKey();
    const eLeaving leaving = askBeforeLeaving();
    switch (leaving) {
    case eLeaving::kKeep:
        // What others stored meanwhile was read, and the items were made anew.
        if (!keepBeforeLeaving() || !(item = subject()) || item->recordKey() != key)
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
    return !m_apply->isEnabled() && !KorDSMCommit::isAnythingPending();
}
