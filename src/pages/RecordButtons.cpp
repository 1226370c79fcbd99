#include "pages/RecordButtons.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/NewRecordQuestion.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "services/Prompts.h"
#include "session/KorDSMUndo.h"

#include <QBoxLayout>
#include <QMessageBox>

namespace {

enum eButton : int { kNew = 1, kCopy, kRename, kGo };

struct Button {
    eButton id;
    int bitmap;
    int prompt;
};
constexpr Button kButtons[] = {{kNew, 1044, 625}, {kCopy, 1043, 626}, {kRename, 1024, 622}, {kGo, 1196, 627}};

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
    page.fillLists();
    page.reload();
    DsmRowsChanged message;
    message.changes = KorDSMUndo::changesSince(before);
    KorDSMMainWindow::sendMessage(message);
}

} // namespace

RecordButtons::RecordButtons(KorDSMPage& page, FindUse use, eGoes goes)
    : m_page(page), m_use(std::move(use)), m_buttons(new KorButtonGroup(this)) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_buttons);
    m_buttons->setIconSize({16, 16});
    for (const Button& button : kButtons)
        if (button.id != kGo || goes == eGoes::kYes)
            m_buttons->addButton(button.id, Prompts::dsm(button.prompt), KorPictures::bitmap(button.bitmap));
    connect(m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        const KorDSMRecordUse::Use cell = m_use();
        if (id == kNew)
            makeFor(m_page, cell);
        else if (id == kCopy)
            copyFor(m_page, cell);
        else if (id == kRename)
            renameFor(m_page, cell);
        else
            goTo(cell);
    });
}

bool RecordButtons::areFor(const Column& column) {
    const bool isChosen = column.role == eReferenceRole::kUses || column.role == eReferenceRole::kFiledUnder;
    return column.isReference() && isChosen && KorDSMRecordCommands::isMade(column.target);
}

void RecordButtons::enable() {
    const KorDSMRecordUse::Use cell = m_use();
    const bool isEditable = m_page.isEditable() && cell.row.key != 0;
    m_buttons->enableButton(kNew, isEditable);
    m_buttons->enableButton(kCopy, isEditable && chosen(cell));
    m_buttons->enableButton(kRename, isEditable && chosen(cell));
    // What stands in no tree is edited beside its choice.
    const KorDSMFamily* family = cell.column ? KorDSMFamilies::of(cell.column->target) : nullptr;
    if (m_buttons->button(kGo))
        m_buttons->enableButton(kGo, m_page.leadsElsewhere() && family && family->make && chosen(cell));
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
