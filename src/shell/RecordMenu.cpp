#include "shell/RecordMenu.h"

#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/NewRecordQuestion.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "services/Prompts.h"
#include "session/KorDSMCopyWish.h"
#include "session/KorDSMDeepCopy.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMRecordUse.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/CommandHelp.h"
#include "shell/CommandStrip.h"
#include "shell/DeletionQuestion.h"
#include "shell/Refusal.h"
#include "shell/SharedConsent.h"
#include "shell/UsageViews.h"
#include "shell/WhenFree.h"
#include "shell/WindowRefresh.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

using KorDSMDefines::eItemType;

namespace {

constexpr int kNewForHere = 628;  // "New, used here"
constexpr int kNewGroup = 620;    // "New group..."
constexpr int kNewCategory = 621; // "New category..."
constexpr int kRename = 622;
constexpr int kOnlyHere = 623; // "A copy for "%s" alone..."
constexpr int kDelete = 624;

// The row of the strip's command: where it is enabled the menu has it already.
bool isInStrip(eItemCommand command, KorDSMDatabaseItem& item) {
    return commandStates(selectionFactsOf(item, false))[command];
}

// Where groups or categories stand, or definitions without one.
bool canHaveGroups(KorDSMDatabaseItem& item) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    return KorDSMDeepCopy::sectionOf(item) && !(family && !family->isGroup() && item.record()) &&
           KorDSMItemCommands::whyNotWritable(item).isEmpty();
}

QKeySequence keyOf(eItemCommand command) {
    return QKeySequence(QString::fromLatin1(rowOf(command).key));
}

QMenu* addMakersMenu(QMenu& menu) {
    QMenu* makers = menu.addMenu(toQt(Prompts::dsm(kNewForHere)));
    CommandHelp::serve(*makers);
    CommandHelp::set(makers->menuAction(), kNewForHere);
    return makers;
}

bool isMadeByUsers(const KorDSMDatabaseItem& item) {
    return item.record() && KorDSMRecordCommands::isMade(item.tableType());
}

// Below its source, without a group.
bool standsAlone(const KorDSMDatabaseItem& item) {
    return item.parent() && item.parent()->type() == KorDSMDefines::kAddInContent;
}

bool isRemovedHere(KorDSMDatabaseItem& item) {
    return isMadeByUsers(item) && !KorDSMDefines::isGroupType(item.type()) &&
           KorDSMItemCommands::whyNotWritable(item).isEmpty() && !isInStrip(eItemCommand::kDelete, item);
}

} // namespace

RecordMenu::RecordMenu(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                       WindowRefresh& refresh, UsageViews& usages)
    : m_window(window), m_structure(structure), m_selection(selection), m_refresh(refresh), m_usages(usages),
      m_rename(new QAction(toQt(Prompts::dsm(kRename)), &window)), m_copy(new QAction(&window)),
      m_newGroup(new QAction(&window)) {
    CommandHelp::set(m_rename, kRename);
    CommandHelp::set(m_copy, kOnlyHere);
    CommandHelp::set(m_newGroup, kNewGroup);
    window.addAction(m_rename);
    window.addAction(m_copy);
    window.addAction(m_newGroup);
    connect(m_newGroup, &QAction::triggered, this, waiting(this, &RecordMenu::makeGroupHere));
    connect(m_rename, &QAction::triggered, this, waiting(this, &RecordMenu::rename));
    connect(m_copy, &QAction::triggered, this, waiting(this, &RecordMenu::copy));
    connect(&m_selection, &TreeSelection::changed, this, &RecordMenu::follow);
    connect(&m_selection, &TreeSelection::subjectsChanged, this, &RecordMenu::follow);
    SharedConsent::offerCopy(
        m_window,
        {[this](RowRef shared) {
             const KorDSMDatabaseItem* item = m_selection.subject();
             const auto use = item ? KorDSMRecordUse::userOf(*item, shared) : std::nullopt;
             return use && KorDSMRecordCommands::isMade(use->column->target) ? use->name : KorString();
         },
         [this](RowRef shared) { // what was to be written is still on its way back
             QTimer::singleShot(0, this,
                                [this, shared] { whenFree(this, [this, shared] { copyInstead(shared); }); });
         }});
    follow();
}

RecordMenu::~RecordMenu() {
    SharedConsent::offerCopy(m_window, {});
}

// In the strip's place where that cannot rename: a window has one use of a key at a time. Pages that rename
// something else take the key while they have the focus.
void RecordMenu::follow() {
    KorDSMDatabaseItem* item = m_selection.subject();
    m_rename->setEnabled(item && isMadeByUsers(*item) &&
                         KorDSMItemCommands::whyNotWritable(*item).isEmpty() &&
                         !isInStrip(eItemCommand::kRename, *item));
    m_rename->setShortcut(m_rename->isEnabled() ? keyOf(eItemCommand::kRename) : QKeySequence());
    followCopy(item);
    // Where no definition can be made, the first thing to make is what it is filed in.
    const bool isFirst = item && canHaveGroups(*item) && !isInStrip(eItemCommand::kNew, *item);
    m_newGroup->setEnabled(isFirst);
    m_newGroup->setShortcut(isFirst ? keyOf(eItemCommand::kNew) : QKeySequence());
}

// A record that another one uses is copied for that; one that nothing uses beside itself.
void RecordMenu::followCopy(KorDSMDatabaseItem* item) {
    const bool isOffered =
        item && isMadeByUsers(*item) && KorDSMItemCommands::whyNotWritable(*item).isEmpty();
    const auto user = isOffered ? KorDSMRecordUse::userOf(*item) : std::nullopt;
    const bool isUnused = isOffered && standsAlone(*item);
    m_copy->setEnabled(user || isUnused);
    const bool hasKey = m_copy->isEnabled() && !isInStrip(eItemCommand::kCopy, *item);
    m_copy->setShortcut(hasKey ? keyOf(eItemCommand::kCopy) : QKeySequence());
    m_copy->setText(user       ? KorMnemonics::literal(toQt(KorString::format(
                                     Prompts::dsm(kOnlyHere), {KorDSMValueText::shortName(user->name)})))
                    : isUnused ? toQt(Prompts::ups(rowOf(eItemCommand::kCopy).prompt))
                               : QString());
}

void RecordMenu::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    if (!KorDSMItemCommands::whyNotWritable(item).isEmpty())
        return;
    menu.addSeparator();
    if (canHaveGroups(item)) {
        const eItemType filed = KorDSMDeepCopy::sectionOf(item)->family;
        const bool isCategory = KorDSMFamilies::of(KorDSMFamilies::of(filed)->group)->isCategory;
        const QString text = toQt(Prompts::dsm(isCategory ? kNewCategory : kNewGroup));
        if (m_newGroup->isEnabled()) {
            CommandStrip::leaveOut(menu, eItemCommand::kNew);
            m_newGroup->setText(text);
            menu.addAction(m_newGroup);
        } else {
            CommandHelp::set(menu.addAction(text, this, [this, &item] { makeGroup(item); }), kNewGroup);
        }
    }
    addMakers(menu, item);
    if (m_rename->isEnabled()) {
        CommandStrip::leaveOut(menu, eItemCommand::kRename);
        menu.addAction(m_rename);
    }
    if (m_copy->isEnabled()) {
        followCopy(&item); // mnemonics were given to its text
        if (!m_copy->shortcut().isEmpty())
            CommandStrip::leaveOut(menu, eItemCommand::kCopy);
        menu.addAction(m_copy);
    }
    if (isRemovedHere(item)) {
        CommandStrip::leaveOut(menu, eItemCommand::kDelete);
        const QString key = QKeySequence(QKeySequence::Delete).toString(QKeySequence::NativeText);
        CommandHelp::set(menu.addAction(toQt(Prompts::dsm(kDelete)) + u'\t' + key, this,
                                        [this, &item] { remove({&item}); }),
                         kDelete);
    }
}

// What the record can use, each made anew and chosen at once.
void RecordMenu::addMakers(QMenu& menu, KorDSMDatabaseItem& item) {
    const TableSchema* table = findTable(item.tableType());
    if (!table || !item.record())
        return;
    QMenu* makers = nullptr;
    for (const Column& column : table->columns) {
        const bool isMade = column.isReference() && column.role == eReferenceRole::kUses &&
                            !column.isSlot() && KorDSMRecordCommands::isMade(column.target);
        if (!isMade)
            continue;
        if (!makers)
            makers = addMakersMenu(menu);
        makers->addAction(toQt(KorDSMValueText::columnCaption(*table, column)) + u'…', this,
                          [this, &item, &column] { makeFor(item, column); });
    }
}

void RecordMenu::makeFor(KorDSMDatabaseItem& item, const Column& column) {
    RightSide::finishEditing();
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const std::size_t before = KorDSMUndo::stepCount();
    const std::optional<NewRecord> wanted = askForNewRecord(column.target, source, &m_window);
    if (!wanted)
        return;
    const KorDSMRecordUse::Use use{{item.tableType(), item.recordKey()}, &column, {}};
    const auto outcome = KorDSMRecordUse::makeFor(source, use, wanted->name, wanted->group);
    if (outcome.isFailed())
        tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    if (!outcome.isStored())
        return;
    DsmGoToRecord message;
    message.source = source;
    message.row = outcome.row;
    KorDSMMainWindow::sendMessage(message);
}

KorString RecordMenu::askName(int itemType, const KorString& initial, bool proposes) {
    KorDSMDialogNewItem dialog(itemType, initial, proposes, &m_window);
    return dialog.exec() == QDialog::Accepted ? dialog.name() : KorString();
}

void RecordMenu::makeGroupHere() {
    if (KorDSMDatabaseItem* item = m_selection.subject(); item && canHaveGroups(*item))
        makeGroup(*item);
}

void RecordMenu::makeGroup(KorDSMDatabaseItem& item) {
    const KorDSMFamily& groups =
        *KorDSMFamilies::of(KorDSMFamilies::of(KorDSMDeepCopy::sectionOf(item)->family)->group);
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const KorString name = askName(groups.type, {}, false);
    if (name.isEmpty())
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome = KorDSMRecordCommands::create(source, groups.table, name, 0);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    if (KorDSMDatabaseItem* made = KorDSMWhereUsed::findItem(m_structure, source, outcome.row))
        m_refresh.showNew({made});
}

void RecordMenu::rename() {
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item || !isMadeByUsers(*item))
        return;
    RightSide::finishEditing();
    const KorString name = askName(item->type(), item->record()->name, false);
    if (name.isEmpty())
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome = KorDSMRecordCommands::rename(KorDSMItemSource::sourceOf(item),
                                                      {item->tableType(), item->recordKey()}, name);
    if (outcome.isFailed())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
}

void RecordMenu::copy() {
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item || !isMadeByUsers(*item))
        return;
    RightSide::finishEditing();
    const KorString name = askName(item->type(), item->record()->name, true);
    if (name.isEmpty())
        return;
    const SourceId source = KorDSMItemSource::sourceOf(item);
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome =
        standsAlone(*item) ? KorDSMRecordCommands::copy(source, {item->tableType(), item->recordKey()}, name)
                           : KorDSMRecordUse::copyForUser(*item, name);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    // The copy stands where the original stood.
    DsmGoToRecord message;
    message.source = source;
    message.row = outcome.row;
    KorDSMMainWindow::sendMessage(message);
}

// The change that was to be made in the shared record is made in the copy.
void RecordMenu::copyInstead(RowRef shared) {
    const std::optional<KorDSMCopyWish> wish = KorDSMCopyWish::take();
    KorDSMDatabaseItem* item = m_selection.subject();
    const auto use = item ? KorDSMRecordUse::userOf(*item, shared) : std::nullopt;
    if (!use)
        return;
    const SourceId source = KorDSMItemSource::sourceOf(item);
    const bool isShown = RowRef{item->tableType(), item->recordKey()} == shared;
    const KorString name = askName(KorDSMRecordCommands::itemTypeOf(shared.table),
                                   KorDSMRecordUse::targetName(source, *use), true);
    if (name.isEmpty())
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome = KorDSMRecordUse::copyFor(source, *use, name, wish);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    if (!isShown)
        return;
    DsmGoToRecord message;
    message.source = source;
    message.row = outcome.row;
    KorDSMMainWindow::sendMessage(message);
}

void RecordMenu::removeSelected() {
    whenFree(this, [this] {
        const std::vector<KorDSMDatabaseItem*> items = m_selection.subjects();
        if (!items.empty() &&
            std::ranges::all_of(items, [](KorDSMDatabaseItem* item) { return isRemovedHere(*item); }))
            remove(items);
    });
}

void RecordMenu::remove(const std::vector<KorDSMDatabaseItem*>& items) {
    RightSide::finishEditing();
    const SourceId source = KorDSMItemSource::sourceOf(items.front());
    std::vector<RowRef> rows;
    for (const KorDSMDatabaseItem* item : items) {
        rows.push_back({item->tableType(), item->recordKey()});
        if (const auto users = KorDSMWhereUsed::usagesHere(source, rows.back()); !users.empty())
            return m_usages.tellOf(users);
    }
    const auto also = askToDelete(m_window, items);
    if (!also)
        return;
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome =
        KorDSMRecordCommands::remove(source, rows, KorDSMRecordCommands::eFiled::kForbids, *also);
    if (!outcome.users.empty())
        return m_usages.tellOf(outcome.users);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
}
