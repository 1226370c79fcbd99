#include "shell/DefinitionCommands.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "model/KorDSMBusy.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMNewItem.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "shell/CommandStrip.h"
#include "shell/DeletionQuestion.h"
#include "shell/Refusal.h"
#include "shell/UsageViews.h"
#include "shell/WindowRefresh.h"

#include <QMessageBox>

using namespace KorDSMDefines;

namespace {

constexpr int kNoGroup = 410; // ""%s" has no group in which it could be filed."

} // namespace

DefinitionCommands::DefinitionCommands(QWidget& window, KorDSMDataStructure& structure,
                                       TreeSelection& selection, RightSide& rightSide, WindowRefresh& refresh,
                                       UsageViews& usages, CommandStrip& strip)
    : m_window(window), m_structure(structure), m_selection(selection), m_rightSide(rightSide),
      m_refresh(refresh), m_usages(usages) {
    strip.on(eItemCommand::kNew, [this] { makeNew(); });
    strip.on(eItemCommand::kCopy, [this] { copy(); });
    strip.on(eItemCommand::kRename, [this] { rename(); });
    strip.on(eItemCommand::kDelete, [this] { remove(); });
}

void DefinitionCommands::makeNew() {
    KorDSMDatabaseItem* selected = m_selection.subject();
    const eItemType type = selected ? KorDSMNewItem::typeAt(*selected) : kNoType;
    if (type == kNoType || refusesToWrite(&m_window, *selected))
        return;
    RightSide::finishEditing();
    KorDSMDialogNewItemWithGroup dialog(type, {}, KorDSMNewItem::groupNameAt(*selected), &m_window);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const SourceId source = KorDSMItemSource::sourceOf(selected);
    KorDSMDatabaseItem* group = KorDSMNewItem::findGroup(m_structure, type, source, dialog.groupKey());
    if (!group)
        return refuse(&m_window,
                      KorString::format(Prompts::dsm(kNoGroup), {KorDSMWhereUsed::sourceName(source)}));
    m_rightSide.pages().requestFormInit();
    const Result<KorDSMDatabaseItem*> made = KorDSMNewItem::create(type, dialog.name(), *group);
    if (!made)
        return refuse(&m_window, made.error);
    m_refresh.showNew({made.value});
}

void DefinitionCommands::copy() {
    const std::vector<KorDSMDatabaseItem*> items = m_selection.subjects();
    if (items.size() > 1)
        return copyEach(items);
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item || refusesToWrite(&m_window, *item))
        return;
    RightSide::finishEditing();
    KorDSMDialogNewItem dialog(item->type(), item->getDisplayName(), true, &m_window);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const KorDSMItemCommands::CopyResult outcome = KorDSMItemCommands::copyItem(*item, dialog.name());
    if (!outcome.isStored())
        return refuse(&m_window, outcome.error);
    m_refresh.showNew(outcome.added);
    m_rightSide.tellNames(outcome.notice);
}

// The copies stand in the list beside their originals, and are selected as those were.
void DefinitionCommands::copyEach(const std::vector<KorDSMDatabaseItem*>& items) {
    if (refusesToWrite(&m_window, *items.front()))
        return;
    RightSide::finishEditing();
    const SourceId source = KorDSMItemSource::sourceOf(items.front());
    std::vector<RowRef> rows;
    for (const KorDSMDatabaseItem* item : items)
        rows.push_back({item->tableType(), item->recordKey()});
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome = KorDSMRecordCommands::copyEach(source, rows);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    std::vector<KorDSMDatabaseItem*> copies;
    {
        const KorDSMBusy busy;
        for (const RowRef row : rows)
            if (KorDSMDatabaseItem* copy = KorDSMWhereUsed::findItem(m_structure, source, row))
                copies.push_back(copy);
    }
    m_rightSide.list().select(copies);
}

void DefinitionCommands::rename() {
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item || !item->record() || refusesToWrite(&m_window, *item))
        return;
    RightSide::finishEditing();
    KorDSMDialogNewItem dialog(item->type(), item->getDisplayName(), false, &m_window);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const KorDSMItemCommands::CommandResult outcome = KorDSMItemCommands::renameItem(*item, dialog.name());
    if (!outcome.isStored())
        return refuse(&m_window, outcome.error);
    m_refresh.itemsChanged();
    m_rightSide.tellNames(outcome.notice);
    m_rightSide.leavePage();
    m_rightSide.resume();
}

void DefinitionCommands::remove() {
    const std::vector<KorDSMDatabaseItem*> items = m_selection.subjects();
    if (items.empty() || refusesToWrite(&m_window, *items.front()))
        return;
    RightSide::finishEditing();
    for (const KorDSMDatabaseItem* item : items)
        if (const auto users = KorDSMItemCommands::usersThatForbidDeleting(*item); !users.empty())
            return m_usages.tellOf(users);
    const auto also = askToDelete(m_window, items);
    if (!also)
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const KorDSMBusy busy;
    // The page must let go of the item before it is gone.
    m_rightSide.letGo();
    KorDSMItemCommands::DeleteResult outcome = KorDSMItemCommands::deleteItems(items, *also);
    m_rightSide.list().deleteSelectedRows();
    m_refresh.removeEntries(outcome.removed);
    if (!also->empty())
        m_refresh.follow(KorDSMUndo::changesSince(before));
    m_refresh.itemsChanged();
    m_rightSide.tellNames(outcome.notice);
    if (outcome.isStored())
        return;
    m_selection.showAgain();
    refuse(&m_window, outcome.error);
}

void DefinitionCommands::drop(KorTreeHandle from, KorTreeHandle to) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(from);
    KorDSMDatabaseItem* target = KorDSMSectionTree::itemOf(to);
    KorDSMDatabaseItem* group = target ? KorDSMItemPath::groupOf(*target) : nullptr;
    if (!item || !group || KorDSMBusy::isBusy())
        return;
    if (const KorString reason = KorDSMItemCommands::whyNotMovable(*item, *group); !reason.isEmpty())
        return refuse(&m_window, reason);
    RightSide::finishEditing();
    const KorDSMBusy busy;
    m_rightSide.letGo();
    const KorDSMItemCommands::CommandResult outcome = KorDSMItemCommands::moveToGroup(*item, *group);
    if (!outcome.isStored()) {
        m_rightSide.show(*item);
        return refuse(&m_window, outcome.error);
    }
    m_refresh.removeEntry(from);
    m_refresh.showNew({item});
    m_rightSide.tellNames(outcome.notice);
}
