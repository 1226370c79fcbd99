#include "shell/DeepCopyCommand.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogDeepCopy.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMMessages.h"
#include "services/Prompts.h"
#include "session/KorDSMDeepCopy.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/CommandHelp.h"
#include "shell/CommandStrip.h"
#include "shell/ExchangeRun.h"
#include "shell/Refusal.h"
#include "shell/TreeSelection.h"
#include "shell/WhenFree.h"
#include "shell/WindowRefresh.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace {

constexpr int kNoTarget = 614;
constexpr int kCopyOut = 615;   // "Copy with all that it uses..."
constexpr int kCopyHere = 1466; // "Copy here with all that it uses..."
constexpr int kBringIn = 980;   // "Copy from %s..."

bool isReadOnly(const KorDSMDatabaseItem& item) {
    return !KorDSMItemCommands::whyNotWritable(item).isEmpty();
}

// A place for definitions, in a source that may be changed.
bool canTakeIn(KorDSMDatabaseItem& item) {
    const SelectionFacts facts{.type = item.type()};
    return (ItemCommandRules::canDeepCopy(facts) || item.type() == KorDSMDefines::kDatabaseContent) &&
           KorDSMDeepCopy::sectionOf(item) && !isReadOnly(item);
}

bool canCopyHere(const KorDSMDatabaseItem& item) {
    return item.record() && KorDSMRecordCommands::isMade(item.tableType()) &&
           !KorDSMDefines::isGroupType(item.type()) && !isReadOnly(item);
}

} // namespace

DeepCopyCommand::DeepCopyCommand(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                                 WindowRefresh& refresh, CommandStrip& strip)
    : m_window(window), m_structure(structure), m_selection(selection), m_refresh(refresh),
      m_copyOut(new QAction(toQt(Prompts::dsm(kCopyOut)), &window)), m_bringIn(new QAction(&window)) {
    strip.on(eItemCommand::kDeepCopy, [this] { bringInto(); });
    strip.leaveOutOfMenus(eItemCommand::kDeepCopy);
    CommandHelp::set(m_bringIn, kBringIn);
    CommandHelp::set(m_copyOut, kCopyOut);
    m_bringIn->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+D")));
    window.addAction(m_bringIn);
    connect(m_bringIn, &QAction::triggered, this, waiting(this, &DeepCopyCommand::bringInto));
    m_copyOut->setShortcut(QKeySequence(QString::fromLatin1(rowOf(eItemCommand::kCopy).key)));
    window.addAction(m_copyOut);
    connect(m_copyOut, &QAction::triggered, this, waiting(this, &DeepCopyCommand::copyOut));
    connect(&m_selection, &TreeSelection::changed, this, &DeepCopyCommand::follow);
    connect(&m_selection, &TreeSelection::subjectsChanged, this, &DeepCopyCommand::follow);
    follow();
}

// In a source that may be changed the key belongs to the copy beside the original.
void DeepCopyCommand::follow() {
    KorDSMDatabaseItem* item = m_selection.subject();
    const std::vector<KorDSMDatabaseItem*> items = m_selection.subjects();
    m_copyOut->setEnabled(!items.empty() && isReadOnly(*items.front()) &&
                          std::ranges::all_of(items, &KorDSMDatabaseItem::record));
    m_bringIn->setEnabled(item && canTakeIn(*item));
}

void DeepCopyCommand::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const std::vector<SourceId> origins = KorDSMDeepCopy::originsFor(source);
    if (m_bringIn->isEnabled() && !origins.empty()) {
        m_bringIn->setText(
            toQt(KorString::format(Prompts::dsm(kBringIn), {KorDSMWhereUsed::sourceName(origins.front())})));
        menu.addSeparator();
        menu.addAction(m_bringIn);
    }
    if (canCopyHere(item)) {
        menu.addSeparator();
        CommandHelp::set(
            menu.addAction(toQt(Prompts::dsm(kCopyHere)), this, [this, &item] { copyHere(item); }),
            kCopyHere);
    }
    const bool hasWay = isReadOnly(item) || !KorDSMDeepCopy::targetsFor(source).empty();
    if (!hasWay || selectedRecords().empty())
        return;
    if (isReadOnly(item)) {
        menu.addSeparator();
        CommandStrip::leaveOut(menu, eItemCommand::kCopy); // which has this key elsewhere
        CommandStrip::leaveOut(menu, eItemCommand::kRename);
        menu.addAction(m_copyOut);
        return;
    }
    if (!canCopyHere(item))
        menu.addSeparator();
    CommandHelp::set(menu.addAction(toQt(Prompts::dsm(kCopyOut)), this, &DeepCopyCommand::copyOut), kCopyOut);
}

bool DeepCopyCommand::drop(KorTreeHandle from, KorTreeHandle to) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(from);
    KorDSMDatabaseItem* target = KorDSMSectionTree::itemOf(to);
    const SourceId source = KorDSMItemSource::sourceOf(item);
    const SourceId into = KorDSMItemSource::sourceOf(target);
    if (!item || !target || source == into || into.dsn == KorDSNDefinitions::kLast || KorDSMBusy::isBusy())
        return false;
    const std::vector<RowRef> records = KorDSMDeepCopy::recordsOf(*item);
    if (!records.empty() && !refusesToWrite(&m_window, *target)) {
        const KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(*target);
        KorDSMDialogDeepCopy dialog(source, records, &m_window, into,
                                    group ? RowRef{group->tableType(), group->recordKey()} : RowRef());
        run(dialog);
    }
    return true;
}

std::vector<RowRef> DeepCopyCommand::selectedRecords() {
    std::vector<RowRef> records;
    for (KorDSMDatabaseItem* item : m_selection.subjects())
        for (const RowRef& row : KorDSMDeepCopy::recordsOf(*item))
            records.push_back(row);
    return records;
}

void DeepCopyCommand::bringInto() {
    KorDSMDatabaseItem* item = m_selection.subject();
    const KorDSMSection* section = item ? KorDSMDeepCopy::sectionOf(*item) : nullptr;
    if (!section || refusesToWrite(&m_window, *item))
        return;
    const SourceId source = KorDSMItemSource::sourceOf(item);
    const KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(*item);
    KorDSMDialogDeepCopy dialog(source, *section, &m_window,
                                group ? RowRef{group->tableType(), group->recordKey()} : RowRef());
    run(dialog);
}

void DeepCopyCommand::copyOut() {
    const std::vector<RowRef> records = selectedRecords();
    if (records.empty())
        return;
    const SourceId source = KorDSMItemSource::sourceOf(m_selection.subjects().front());
    if (KorDSMDeepCopy::targetsFor(source).empty())
        return refuse(&m_window, Prompts::dsm(kNoTarget));
    KorDSMDialogDeepCopy dialog(source, records, &m_window);
    run(dialog);
}

// Within its source nothing is there already that a copy of its own could use.
void DeepCopyCommand::copyHere(KorDSMDatabaseItem& item) {
    RightSide::finishEditing();
    KorDSMDialogNewItem dialog(item.type(), item.record()->name, true, &m_window);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const std::size_t before = KorDSMUndo::stepCount();
    const auto outcome =
        KorDSMRecordCommands::copy(source, {item.tableType(), item.recordKey()}, dialog.name(),
                                   KorDSMRecordCommands::eDepth::kAllThatUsed);
    if (!outcome.isStored())
        return tellFailure(&m_window, outcome);
    m_refresh.follow(KorDSMUndo::changesSince(before));
    DsmGoToRecord message;
    message.source = source;
    message.row = outcome.row;
    KorDSMMainWindow::sendMessage(message);
}

void DeepCopyCommand::run(KorDSMDialogDeepCopy& dialog) {
    RightSide::finishEditing();
    if (dialog.exec() != QDialog::Accepted)
        return;
    KorDSMDeepCopy::Outcome outcome;
    {
        const ExchangeRun progress;
        outcome = KorDSMDeepCopy::copy(dialog.wish());
    }
    if (!outcome.done)
        return outcome.error.isEmpty() ? void() : refuse(&m_window, outcome.error);
    m_refresh.follow(outcome.changes);
    std::vector<KorDSMDatabaseItem*> copies;
    for (const KorDSMRowChange& change : outcome.changes)
        if (change.row.table == dialog.wish().records.front().table)
            if (KorDSMDatabaseItem* copy = KorDSMWhereUsed::findItem(m_structure, change.source, change.row))
                copies.push_back(copy);
    m_refresh.showNew(copies);
}
