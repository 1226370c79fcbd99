#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/VELComboTree.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "model/KorDSMSectionLoader.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemUpdate.h"
#include "session/KorDSMNewItem.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

// The commands of the main dialog that change which records exist, and their undo.

using namespace KorDSMDefines;

namespace {

constexpr int kRefused = 260;   // caption of the message that says why a command did nothing
constexpr int kWhereUsed = 262; // "Where used..."
constexpr int kNotDone = 412;   // "That could not be done, ..."
constexpr int kNoGroup = 410;   // ""%s" has no group in which it could be filed."

} // namespace

void KorDSMMainDialog::newItem() {
    KorDSMDatabaseItem* selected = currentItem();
    const eItemType type = selected ? KorDSMNewItem::typeAt(*selected) : kNoType;
    if (type == kNoType || refusesToWrite(*selected))
        return;
    finishCurrentPage();
    KorDSMDialogNewItemWithGroup dialog(type, {}, KorDSMNewItem::groupNameAt(*selected), this);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const SourceId source = KorDSMItemSource::sourceOf(selected);
    KorDSMDatabaseItem* group = KorDSMNewItem::findGroup(m_structure, type, source, dialog.groupKey());
    if (!group)
        return refuse(KorString::format(Prompts::dsm(kNoGroup), {KorDSMWhereUsed::sourceName(source)}));
    m_pages.requestPlainInit();
    if (KorDSMDatabaseItem* item = KorDSMNewItem::create(type, dialog.name(), *group))
        showNewItems({item});
    else
        refuse(KorDSMNewItem::whyNotMade(type));
}

void KorDSMMainDialog::copyItem() {
    KorDSMDatabaseItem* item = currentItem();
    if (!item || refusesToWrite(*item))
        return;
    finishCurrentPage();
    KorDSMDialogNewItem dialog(item->m_Type, item->getDisplayName(), true, this);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const KorDSMItemCommands::CopyOutcome outcome = KorDSMItemCommands::copyItem(*item, dialog.name());
    if (!outcome.done)
        return refuse(outcome.refusal);
    showNewItems(outcome.added);
    sendNotice(outcome.notice);
}

// The first one is shown; a record that is shown in two sections comes in both.
void KorDSMMainDialog::showNewItems(const std::vector<KorDSMDatabaseItem*>& items) {
    if (items.empty() || !showPlaceOf(*items.front()))
        return;
    clearFilter();
    for (KorDSMDatabaseItem* item : items) {
        KorDSMSectionTree& holder = tree(KorDSMItemPath::sectionOf(*item)->m_Section);
        holder.reveal(*item);
        if (!item->m_hTreeItem)
            holder.addEntry(*item);
    }
    if (KorTreeHandle first = items.front()->m_hTreeItem)
        currentTree().control()->selectItem(first);
    itemsChanged();
}

void KorDSMMainDialog::renameItem() {
    KorDSMDatabaseItem* item = currentItem();
    if (!item || !item->record() || refusesToWrite(*item))
        return;
    finishCurrentPage();
    KorDSMDialogNewItem dialog(item->m_Type, item->getDisplayName(), false, this);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const KorDSMBusy busy;
    const KorDSMItemCommands::Outcome outcome = KorDSMItemCommands::renameItem(*item, dialog.name());
    if (!outcome.done)
        return refuse(outcome.refusal);
    itemsChanged();
    sendNotice(outcome.notice);
    reloadPage();
}

void KorDSMMainDialog::deleteItem() {
    KorDSMDatabaseItem* item = currentItem();
    if (!item || refusesToWrite(*item))
        return;
    finishCurrentPage();
    if (const auto users = KorDSMItemCommands::usersThatForbidDeleting(*item); !users.empty()) {
        showUsers(users);
        return;
    }
    const QString question =
        toQt(KorString::format(Prompts::ups(19961), {KorDSMValueText::shortName(item->getDisplayName())}));
    QMessageBox box(QMessageBox::Information, toQt(Prompts::ups(19960)), question,
                    QMessageBox::Yes | QMessageBox::No, this);
    if (box.exec() != QMessageBox::Yes)
        return;
    const KorDSMBusy busy;
    // The page must let go of the item before it is gone.
    m_tabs->finishCurrentPage();
    m_tabs->setCurrentContent(nullptr);
    KorDSMItemCommands::DeleteOutcome outcome = KorDSMItemCommands::deleteItem(*item);
    if (!outcome.done) {
        showRightSide(*item);
        return refuse(outcome.refusal);
    }
    for (const auto& removed : outcome.removed)
        if (KorDSMSectionTree* holder = treeOf(removed->m_hTreeItem))
            holder->deleteEntry(removed->m_hTreeItem);
    m_list->deleteSelectedItems();
    itemsChanged();
    sendNotice(outcome.notice);
}

void KorDSMMainDialog::showUsers(const std::vector<KorDSMUsage>& users) {
    KorDSMDialogInUse dialog(KorDSMItemCommands::inUseText(), users, this);
    dialog.exec();
    if (dialog.chosen())
        goToUsage(*dialog.chosen());
}

void KorDSMMainDialog::goToUsage(const KorDSMUsage& usage) {
    if (KorDSMDatabaseItem* user = KorDSMWhereUsed::findItem(m_structure, usage.source, usage.row))
        goToItem(*user);
}

void KorDSMMainDialog::listUsers(const KorDSMDatabaseItem& item) {
    auto* dialog = new KorDSMDialogWhereUsed(item.getDisplayName(), KorDSMItemSource::sourceOf(&item),
                                             {item.tableType(), item.recordKey()}, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &KorDSMDialogWhereUsed::usageChosen, this, waiting(&KorDSMMainDialog::goToUsage));
    dialog->show();
}

void KorDSMMainDialog::refuse(const KorString& reason) {
    QMessageBox::information(this, toQt(Prompts::dsm(kRefused)),
                             toQt(reason.isEmpty() ? Prompts::dsm(kNotDone) : reason));
}

// Where the item's source cannot be written the user is told so before being asked for anything.
bool KorDSMMainDialog::refusesToWrite(const KorDSMDatabaseItem& item) {
    const KorString reason = KorDSMItemCommands::whyNotWritable(item);
    if (!reason.isEmpty())
        refuse(reason);
    return !reason.isEmpty();
}

void KorDSMMainDialog::sendNotice(const KorDSMItemCommands::ListNotice& notice) {
    m_pages.requestPlainInit();
    DsmListChanged message;
    message.senderPageCode = notice.senderPageCode;
    message.action = notice.action;
    message.name = notice.path(VELComboTree::GetPathDelimiter());
    for (const int receiver : notice.receivers)
        if (KorDSMPage* page = m_pages.pageOfCode(receiver))
            page->onMessage(message);
}

void KorDSMMainDialog::undo(int steps) {
    finishCurrentPage();
    for (; steps > 1; --steps)
        followChanges(KorDSMUndo::undo());
    followStep(KorDSMUndo::undo());
}

void KorDSMMainDialog::redo(int steps) {
    finishCurrentPage();
    for (; steps > 1; --steps)
        followChanges(KorDSMUndo::redo());
    followStep(KorDSMUndo::redo());
}

// Shows what a step changed where that is not shown already.
void KorDSMMainDialog::followStep(const std::vector<KorDSMRowChange>& changes) {
    followChanges(changes);
    KorDSMDatabaseItem* shown = currentItem();
    KorDSMDatabaseItem* changed = nullptr;
    {
        const KorDSMBusy busy;
        changed = KorDSMUndo::itemOf(m_structure, changes, shown);
    }
    if (changed && changed != shown)
        goToItem(*changed);
}

// Brings items, trees and the page shown in line with rows that are different now.
void KorDSMMainDialog::followChanges(const std::vector<KorDSMRowChange>& changes) {
    if (changes.empty())
        return;
    const KorDSMBusy busy;
    // The page lets go of an item that may be gone when the items have followed.
    m_tabs->finishCurrentPage();
    KorDSMItemUpdate::Outcome outcome = KorDSMItemUpdate::follow(m_structure, changes);
    // Filling lists with the names of a large database takes its time: only where names are different.
    constexpr int kNameColumn = 1;
    if (std::ranges::any_of(changes, [](const KorDSMRowChange& change) {
            return change.kind != KorDSMRowChange::eKind::kChanged || change.changedColumn(kNameColumn);
        }))
        m_pages.requestInit();
    if (outcome.reload)
        return reloadSections();
    for (const auto& removed : outcome.removed)
        if (KorDSMSectionTree* holder = treeOf(removed->m_hTreeItem))
            holder->deleteEntry(removed->m_hTreeItem);
    for (KorDSMDatabaseItem* item : outcome.moved)
        if (KorDSMSectionTree* holder = treeOf(item->m_hTreeItem))
            holder->deleteEntry(item->m_hTreeItem);
    for (auto* items : {&outcome.added, &outcome.moved})
        for (KorDSMDatabaseItem* item : *items)
            if (KorDsmSectionItem* section = KorDSMItemPath::sectionOf(*item))
                tree(section->m_Section).addEntry(*item);
    itemsChanged();
    m_tabs->resumeCurrentPage();
    markPages();
}

void KorDSMMainDialog::reloadPage() {
    m_tabs->finishCurrentPage();
    m_tabs->resumeCurrentPage();
}

void KorDSMMainDialog::reloadSections() {
    const KorDSMBusy busy;
    const eViewSections section = m_structure.getSelectedSection();
    const bool applyEnabled = m_apply->isEnabled();
    std::array<KorArray<KorString>, kNumberOfSections> paths;
    for (int i = 0; i < kNumberOfSections; ++i)
        paths[static_cast<std::size_t>(i)] = m_structure.getSelectedPath(static_cast<eViewSections>(i));
    clearFilter();
    m_tabs->finishCurrentPage();
    m_tabs->setCurrentContent(nullptr);
    m_handleSelection = false;
    for (SectionSlot& slotOfSection : m_slots) {
        slotOfSection.tree->clear();
        slotOfSection.combo->deleteAll();
        slotOfSection.sources.clear();
    }
    m_handleSelection = true;
    m_currentEntry = nullptr;
    const SourceId target{m_structure.getTargetDatabase(section), m_structure.getTargetAddIn(section)};
    m_structure.setUpdateStatus(KorDSMDataStructure::kReloadRequested);
    KorDSMSectionLoader().loadDataStructure(m_structure);
    m_structure.setSelectedSection(section);
    m_structure.setTargetDatabase(section, target.dsn);
    m_structure.setTargetAddIn(section, target.index);
    for (int i = 0; i < kNumberOfSections; ++i)
        m_structure.getSelectedPath(static_cast<eViewSections>(i)) = paths[static_cast<std::size_t>(i)];
    for (const eViewSections loaded : kLoadingOrder)
        fillSourceCombo(loaded);
    showSectionAgain();
    if (applyEnabled)
        setModified(true);
}

void KorDSMMainDialog::showContextMenu(KorTreeHandle entry, const QPoint& position) {
    if (KorDSMBusy::isBusy())
        return;
    if (entry)
        currentTree().control()->selectItem(entry);
    // A menu is no modal window: coming back to the editor by a click on an entry must not exchange the
    // items.
    const KorDSMBusy busy;
    QMenu menu(this);
    for (QAction* action : m_commandActions)
        menu.addAction(action);
    KorDSMDatabaseItem* item = currentItem();
    if (item) {
        addViewCommands(menu, *item);
        addCompactCommand(menu, *item);
    }
    if (item && item->record() && item->tableType() != kNoTable) {
        menu.addSeparator();
        connect(menu.addAction(toQt(Prompts::dsm(kWhereUsed))), &QAction::triggered, this,
                [this, item] { listUsers(*item); });
    }
    menu.addSeparator();
    for (QAction* action : m_undoStrip->actions())
        menu.addAction(action);
    menu.exec(position);
}

void KorDSMMainDialog::dropEntry(KorTreeHandle from, KorTreeHandle to) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(from);
    KorDSMDatabaseItem* target = KorDSMSectionTree::itemOf(to);
    KorDSMDatabaseItem* group = target ? KorDSMItemPath::groupOf(*target) : nullptr;
    if (!item || !group || KorDSMBusy::isBusy())
        return;
    if (const KorString reason = KorDSMItemCommands::whyNotMovable(*item, *group); !reason.isEmpty())
        return refuse(reason);
    finishCurrentPage();
    const KorDSMBusy busy;
    m_tabs->setCurrentContent(nullptr);
    const KorDSMItemCommands::Outcome outcome = KorDSMItemCommands::moveToGroup(*item, *group);
    if (!outcome.done) {
        showRightSide(*item);
        return refuse(outcome.refusal);
    }
    currentTree().deleteEntry(from);
    showNewItems({item});
    sendNotice(outcome.notice);
}
