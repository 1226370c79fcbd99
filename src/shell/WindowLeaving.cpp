#include "shell/WindowLeaving.h"

#include "controls/KorFieldNote.h"
#include "controls/KorQt.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDialogFactory.h"
#include "services/Prompts.h"
#include "session/KorDSMHandOver.h"
#include "session/KorDSMUndo.h"
#include "shell/ApplyState.h"
#include "shell/PendingQuestion.h"
#include "shell/Reports.h"
#include "shell/TreeSelection.h"

#include <QMessageBox>
#include <QPushButton>

#include <limits>

namespace {

constexpr int kLeavingCaption = 420;
constexpr int kChanges = 422; // "%d changes are not stored yet. ..."
constexpr int kKeepChanges = 423;
constexpr int kDropChanges = 424;
constexpr int kGoOnEditing = 425;
constexpr int kFieldNotStored = 413; // "A field shows what is not stored. ..."
constexpr int kLeaveWithoutIt = 414;

} // namespace

void WindowLeaving::apply() {
    const KorDSMBusy busy;
    RightSide::finishEditing();
    const bool isKept = m_reports.keep(&KorDSMCommit::keepAndGoOn);
    m_applyState.updateUndo();
    if (isKept)
        m_applyState.setApplied();
}

WindowLeaving::eAnswer WindowLeaving::askAboutPending() {
    if (!KorDSMDialogFactory::options().asksBeforeLeaving || !KorDSMUndo::isPending())
        return eAnswer::kNotAsked;
    const std::vector<KorString> steps = KorDSMUndo::undoSteps(std::numeric_limits<std::size_t>::max());
    const auto number = static_cast<std::int64_t>(steps.size());
    KorString question = KorString::format(Prompts::counted(kChanges, number), {KorString::number(number)});
    if (const KorString left = KorDSMCommit::whatMayBeStored(); !left.isEmpty())
        question = KorString::format("%s\n\n%s", {question, left});
    constexpr eAnswer kAnswers[] = {eAnswer::kKeep, eAnswer::kDrop, eAnswer::kGoOn};
    return kAnswers[askAboutChanges(&m_window, Prompts::dsm(kLeavingCaption), question, steps,
                                    {kKeepChanges, kDropChanges, kGoOnEditing})];
}

// Lets the page take what is being typed. Returns whether the window may be left: nothing that a field shows
// was refused or declined, or the user leaves without it.
bool WindowLeaving::finishEditing() {
    RightSide::finishEditing();
    const KorDSMPage* page = KorDSMPage::currentPage();
    QWidget* field = page ? KorFieldNote::first(page) : nullptr;
    if (!field || !KorDSMDialogFactory::options().asksBeforeLeaving)
        return true;
    QMessageBox box(QMessageBox::Question, toQt(Prompts::dsm(kLeavingCaption)),
                    toQt(Prompts::dsm(kFieldNotStored)), QMessageBox::NoButton, &m_window);
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

// Returns whether all is stored; says what is not.
bool WindowLeaving::keep() {
    return m_reports.keep([this] { return KorDSMCommit::keepAndClose(m_applyState.isModified()); });
}

WindowLeaving::eWay WindowLeaving::accept() {
    return finishEditing() && keep() ? eWay::kAccept : eWay::kStay;
}

WindowLeaving::eWay WindowLeaving::reject() {
    // Whoever is asked is asked about what is still being typed too.
    if (KorDSMDialogFactory::options().asksBeforeLeaving && !finishEditing())
        return eWay::kStay;
    switch (askAboutPending()) {
    case eAnswer::kKeep:
        return keep() ? eWay::kAccept : eWay::kStay;
    case eAnswer::kGoOn:
        return eWay::kStay;
    case eAnswer::kDrop:
    case eAnswer::kNotAsked:
        break;
    }
    KorDSMCommit::discard();
    return eWay::kReject;
}

WindowLeaving::eWay WindowLeaving::use() {
    RightSide::finishEditing();
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item)
        return eWay::kStay;
    const int key = item->recordKey();
    const eAnswer answer = askAboutPending();
    switch (answer) {
    case eAnswer::kKeep:
        if (!keep())
            return eWay::kStay;
        item = m_selection.subject(); // what others stored meanwhile was read, and the items were made anew
        if (!item || item->recordKey() != key)
            return eWay::kStay;
        break;
    case eAnswer::kDrop:
        KorDSMCommit::discard(); // a style that was only pending is not found by the hand-over then
        break;
    case eAnswer::kGoOn:
        return eWay::kStay;
    case eAnswer::kNotAsked:
        break;
    }
    m_selection.selectDatabase(item);
    KorDSMHandOver::put(item);
    if (answer == eAnswer::kNotAsked &&
        m_structure.getUpdateStatus() == KorDSMDataStructure::kReloadRequested)
        m_structure.setUpdateStatus(KorDSMDataStructure::kKeepContent);
    return eWay::kAccept;
}

bool WindowLeaving::mayEscape() const {
    return !m_applyState.isModified() && !KorDSMUndo::isPending();
}
