#include "pages/RecordButtons.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/NewRecordQuestion.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMTwins.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMWhereUsed.h"

#include <QBoxLayout>
#include <QMessageBox>

namespace {

enum eButton : int { kNew = 1, kCopy, kRename, kGo, kDelete };

struct Button {
    eButton id;
    int bitmap;
    int prompt;
    bool isOffered[4]; // by what is offered
};
constexpr Button kButtons[] = {{kNew, 1044, 625, {true, true, true, true}},
                               {kCopy, 1043, 626, {true, true, true, false}},
                               {kRename, 1024, 622, {true, true, true, false}},
                               {kGo, 1196, 627, {true, false, false, false}},
                               {kDelete, 1048, 1467, {false, true, false, true}}};

const StructRecord* chosen(const KorDSMRecordUse::Use& use) {
    const StructRecord* user =
        use.column ? CurrentRows::find(use.row.table, KorOdbcKey(use.row.key)) : nullptr;
    return user ? CurrentRows::find(use.column->target, KorOdbcKey(use.column->integerIn(user))) : nullptr;
}

void follow(KorDSMPage& page, const KorDSMRecordCommands::Outcome& outcome, std::size_t before) {
    if (outcome.isFailed())
        QMessageBox::information(page.window(), page.window()->windowTitle(),
                                 QString::fromStdString(outcome.error));
    if (!outcome.isStored())
        return;
    if (auto* shown = page.getData().as<KorDSMDatabaseItem>())
        KorDSMTwins::recordWritten(*shown); // of which the page may ask what it chooses
    page.fillLists();
    page.reload();
    DsmRowsChanged message;
    message.changes = KorDSMUndo::changesSince(before);
    KorDSMMainWindow::sendMessage(message);
}

} // namespace

RecordButtons::RecordButtons(KorDSMPage& page, FindUse use, eOffer offer)
    : m_page(page), m_use(std::move(use)), m_buttons(new KorButtonGroup(this)) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_buttons);
    m_buttons->setIconSize({16, 16});
    for (const Button& button : kButtons)
        if (button.isOffered[static_cast<std::size_t>(offer)])
            m_buttons->addButton(button.id, Prompts::dsm(button.prompt), KorPictures::bitmap(button.bitmap));
    connect(m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        const KorDSMRecordUse::Use cell = m_use();
        if (id == kNew)
            makeFor(m_page, cell);
        else if (id == kCopy)
            copyFor(m_page, cell);
        else if (id == kRename)
            renameFor(m_page, cell);
        else if (id == kGo)
            goTo(cell);
        else
            removeFor(m_page, cell);
    });
}

bool RecordButtons::areFor(const Column& column) {
    const bool isChosen = column.role == eReferenceRole::kUses || column.role == eReferenceRole::kFiledUnder;
    return column.isReference() && isChosen && KorDSMRecordCommands::isMade(column.target);
}

RecordButtons::eOffer RecordButtons::offerFor(const Column& column) {
    const KorDSMFamily* family = KorDSMFamilies::of(column.target);
    return family && family->make ? eOffer::kWithGoing : eOffer::kWithDeleting;
}

void RecordButtons::enable() {
    const KorDSMRecordUse::Use cell = m_use();
    const bool isEditable = m_page.isEditable() && cell.row.key != 0;
    const bool isChosen = chosen(cell) != nullptr;
    const std::pair<eButton, bool> states[] = {{kNew, isEditable},
                                               {kCopy, isEditable && isChosen},
                                               {kRename, isEditable && isChosen},
                                               {kGo, isChosen && m_page.leadsElsewhere()},
                                               {kDelete, isEditable && isChosen}};
    for (const auto& [id, isOn] : states)
        if (m_buttons->button(id))
            m_buttons->enableButton(id, isOn);
}

void RecordButtons::makeFor(KorDSMPage& page, const KorDSMRecordUse::Use& use) {
    page.finishEditing();
    const std::size_t before = KorDSMUndo::stepCount();
    const SourceId source = CurrentRows::source();
    const std::optional<NewRecord> wanted = askForNewRecord(use.column->target, source, page.window());
    if (!wanted)
        return;
    follow(page, KorDSMRecordUse::makeFor(source, use, wanted->name, wanted->group), before);
}

void RecordButtons::copyFor(KorDSMPage& page, const KorDSMRecordUse::Use& use) {
    page.finishEditing();
    const StructRecord* original = chosen(use);
    if (!original)
        return;
    KorDSMDialogNewItem dialog(KorDSMFamilies::of(use.column->target)->type, original->name, true,
                               page.window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    follow(page, KorDSMRecordUse::copyFor(CurrentRows::source(), use, dialog.name()), before);
}

void RecordButtons::renameFor(KorDSMPage& page, const KorDSMRecordUse::Use& use) {
    page.finishEditing();
    const StructRecord* named = chosen(use);
    if (!named)
        return;
    const RowRef row{use.column->target, named->key};
    KorDSMDialogNewItem dialog(KorDSMFamilies::of(row.table)->type, named->name, false, page.window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    follow(page, KorDSMRecordCommands::rename(CurrentRows::source(), row, dialog.name()), before);
}

void RecordButtons::goTo(const KorDSMRecordUse::Use& use) {
    const StructRecord* target = chosen(use);
    if (!target)
        return;
    DsmGoToRecord message;
    message.source = CurrentRows::source();
    message.row = {use.column->target, target->key};
    KorDSMMainWindow::sendMessage(message);
}

void RecordButtons::removeFor(KorDSMPage& page, const KorDSMRecordUse::Use& use) {
    page.finishEditing();
    if (!chosen(use))
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome = KorDSMRecordUse::removeFor(CurrentRows::source(), use);
    if (outcome.users.empty())
        return follow(page, outcome, before);
    KorDSMDialogInUse dialog(KorDSMItemCommands::inUseText(), outcome.users, page.window());
    dialog.exec();
    if (const auto user = dialog.chosen())
        KorDSMWhereUsed::whenSettled([user] {
            DsmGoToRecord message;
            message.source = user->source;
            message.row = user->row;
            KorDSMMainWindow::sendMessage(message);
        });
}
