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

#include <optional>
#include <utility>

// The commands of the main dialog that change which records exist, and their undo.

using namespace KorDSMDefines;

namespace {

constexpr int kRefused = 260;       // caption of the message that says why a command did nothing
constexpr int kWhereUsed = 262;     // "Where used..."
constexpr int kNotDone = 412;       // "That could not be done, ..."
constexpr int kNoGroup = 410;       // ""%s" has no group in which it could be filed."
constexpr int kDeleteMany = 495;    // "Do you want to delete these %s definitions?"
constexpr int kOneViewLeaves = 496; // "One view is listed in it and stays; only the listing goes."
constexpr int kViewsLeave = 497;    // "%s views are listed in it and stay; only the listing goes."

} // namespace

void KorDSMMainDialog::newItem() {
    KorDSMDatabaseItem* selected = subject();
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
    KorDSMDatabaseItem* item = subject();
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
    KorDSMDatabaseItem* item = subject();
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

bool KorDSMMainDialog::wantsToDelete(const std::vector<KorDSMDatabaseItem*>& items) {
    const auto count = static_cast<std::int64_t>(items.size());
    int views = 0;
    QStringList names;
    for (const KorDSMDatabaseItem* item : items) {
        names << toQt(KorDSMValueText::shortName(item->getDisplayName()));
        views += KorDSMItemCommands::viewsListedIn(*item);
    }
    QMessageBox box(QMessageBox::Information, toQt(Prompts::ups(19960)), {},
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setTextFormat(Qt::PlainText);
    box.setText(count == 1 ? toQt(KorString::format(Prompts::ups(19961), {fromQt(names.first())}))
                           : toQt(KorString::format(Prompts::dsm(kDeleteMany), {KorString::number(count)})));
    if (count > 1)
        box.setDetailedText(names.join(u'\n'));
    if (views > 0)
        box.setInformativeText(toQt(KorString::format(Prompts::dsm(views == 1 ? kOneViewLeaves : kViewsLeave),
                                                      {KorString::number(views)})));
    return box.exec() == QMessageBox::Yes;
}

void KorDSMMainDialog::deleteItems() {
    const std::vector<KorDSMDatabaseItem*> items = subjects();
    if (items.empty() || refusesToWrite(*items.front()))
        return;
    finishCurrentPage();
    for (const KorDSMDatabaseItem* item : items)
        if (const auto users = KorDSMItemCommands::usersThatForbidDeleting(*item); !users.empty())
            return showUsers(users);
    if (!wantsToDelete(items))
        return;
    const KorDSMBusy busy;
    // The page must let go of the item before it is gone.
    m_tabs->finishCurrentPage();
    m_tabs->setCurrentContent(nullptr);
    KorDSMItemCommands::DeleteOutcome outcome = KorDSMItemCommands::deleteItems(items);
    m_list->deleteSelectedItems();
    for (const auto& removed : outcome.removed)
        if (KorDSMSectionTree* holder = treeOf(removed->m_hTreeItem))
            holder->deleteEntry(removed->m_hTreeItem);
    itemsChanged();
    sendNotice(outcome.notice);
    if (outcome.done)
        return;
    if (KorDSMDatabaseItem* shown = currentItem())
        showRightSide(*shown);
    refuse(outcome.refusal);
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
    const KorDSMDatabaseItem* shown = KorDSMSectionTree::itemOf(m_currentEntry);
    const auto place = shown ? std::optional(KorDSMPlace(*shown)) : std::nullopt;
    std::array<KorArray<KorString>, kNumberOfSections> paths;
    for (int i = 0; i < kNumberOfSections; ++i)
        paths[static_cast<std::size_t>(i)] = m_structure.getSelectedPath(static_cast<eViewSections>(i));
    forgetFilter();
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
    // The path of names does not lead to what was renamed meanwhile.
    if (KorDSMDatabaseItem* item = place ? place->find(m_structure) : nullptr;
        item && item != currentItem()) {
        const bool recording = std::exchange(m_recording, false);
        goToItem(*item);
        m_recording = recording;
    }
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
    m_list->clearSelection();
    QMenu menu(this);
    addItemCommands(menu);
    menu.exec(position);
}

// The commands of what is selected, wherever that is.
void KorDSMMainDialog::addItemCommands(QMenu& menu) {
    for (QAction* action : m_commandActions)
        menu.addAction(action);
    KorDSMDatabaseItem* item = subject();
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
