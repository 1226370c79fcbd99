#include "base/KorAssert.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/exchange/MasterNumbers.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMItemCommands.h"
#include "session/PendingGroup.h"

#include <algorithm>

// Copying and deleting.

namespace KorDSMItemCommands {

using namespace ItemCommandParts;

namespace {

constexpr int kCopying = 245;      // "copying of "%s""
constexpr int kDeleting = 244;     // "deletion of "%s""
constexpr int kReadOnly = 200;     // ""%s" can be read, not changed"
constexpr int kDeletingMany = 493; // "deletion of %s definitions"
constexpr int kNoMaster = 494;     // ""%s" has no category any more, so it cannot be copied."
constexpr int kInUse = 33521;

// Announces a write that was made. Returns whether it was.
bool announced(int result) {
    if (result == WriteResult::kWritten)
        KorDSMMainWindow::sendMessage(DsmDataChanged());
    return result == WriteResult::kWritten;
}

// The same for writes that must not fail here.
bool announcedOrReported(int result) {
    KorAssert::check(result > 0, "result > 0");
    return announced(result);
}

// Without a master the copy would be unknown to the host.
bool lacksMaster(const KorDSMDatabaseItem& item) {
    StructDetailMaster master;
    return needsMaster(item) && !readMaster(item, master);
}

bool copyMaster(StructDetailMaster master, const StructRecord& copy) {
    master.key = 0;
    master.name = copy.name;
    master.styleKey = copy.key;
    master.number = freeMasterNumber(*StyleDatabases::current().here(), master);
    KorOdbcMan::m_structDetailMaster = master;
    return announced(KorOdbcMan::appendNewRecord(kTableDetailMaster, 0, KorOdbcMan::kThisRow));
}

// Appends the item's record under the name as a new row and gives it the new row's key. Returns a write
// result.
int appendRecord(KorDSMDatabaseItem& item, const KorString& name) {
    StructRecord& current = KorOdbcMan::currentRecord(item.tableType());
    CurrentRows::all(item.tableType())->assign(current, *item.record());
    current.setRunBezeichnung(name);
    const int result = KorOdbcMan::appendNewRecord(item.tableType(), 1, KorOdbcMan::kThisRow);
    if (result == WriteResult::kWritten)
        item.updateRecord(current);
    return result;
}

bool appendCopy(KorDSMDatabaseItem& copy, const KorString& name) {
    StructDetailMaster master;
    const bool hasMaster = readMaster(copy, master);
    return announced(appendRecord(copy, name)) && (!hasMaster || copyMaster(master, *copy.record()));
}

// The loaded group in which a record that is shown as a part of another one is filed, or null.
KorDSMDatabaseItem* groupElsewhere(const KorDSMDatabaseItem& item) {
    if (KorDSMDefines::isGroupType(item.parent()->type()))
        return nullptr;
    const Column* filing = KorDSMFamilies::filingColumn(item.tableType());
    return filing ? KorDSMWhereUsed::findGroup(KorDSMDialogFactory::getDSMDataStructure(),
                                               KorDSMItemSource::sourceOf(&item),
                                               {filing->target, filing->integerIn(item.record())})
                  : nullptr;
}

KorString noteOf(SourceId source) {
    StyleDatabases& databases = StyleDatabases::current();
    if (!databases.source(source) || databases.isEditable(source))
        return {};
    return KorString::format(Prompts::dsm(kReadOnly), {KorDSMWhereUsed::sourceName(source)});
}

} // namespace

KorString whyNotWritable(SourceId source) {
    const std::string tooNew = StyleDatabases::current().whyTooNew(source);
    return tooNew.empty() ? noteOf(source) : KorString(tooNew);
}

KorString readOnlyNote(const KorDSMDatabaseItem& item) {
    return noteOf(KorDSMItemSource::sourceOf(&item));
}

KorString whyNotWritable(const KorDSMDatabaseItem& item) {
    return whyNotWritable(KorDSMItemSource::sourceOf(&item));
}

bool canCopy(KorDSMDefines::eItemType type) {
    const KorDSMFamily* family = KorDSMFamilies::of(type);
    return family && family->isFiled();
}

bool canDelete(KorDSMDefines::eItemType type) {
    return canCopy(type) || KorDSMDefines::isGroupType(type);
}

CopyOutcome copyItem(KorDSMDatabaseItem& item, const KorString& newName) {
    CopyOutcome outcome;
    if (!canCopy(item.type()) || !item.parent())
        return outcome;
    const SourceRequest source(item);
    const KorString name = newName.trimmed();
    outcome.refusal = whyNotNamed(item, name, 0);
    if (outcome.refusal.isEmpty())
        outcome.refusal = whyIncomplete();
    if (outcome.refusal.isEmpty() && lacksMaster(item))
        outcome.refusal = label(kNoMaster, item.record()->name);
    if (!outcome.refusal.isEmpty())
        return outcome;
    std::unique_ptr<KorDSMDatabaseItem> copy = item.clone();
    PendingGroup group(label(kCopying, item.record()->name));
    if (!appendCopy(*copy, name)) {
        group.takeBack();
        outcome.refusal =
            whyNotCopied(*StyleDatabases::current().here(), {item.tableType(), item.recordKey()});
        if (outcome.refusal.isEmpty() && needsMaster(item))
            outcome.refusal = whyFull(kTableDetailMaster);
        return outcome;
    }
    if (const auto complete = KorDSMFamilies::of(copy->type())->complete)
        complete(*copy);
    outcome.done = true;
    outcome.notice = noticeFor(*copy, DsmListChanged::kAdded);
    if (KorDSMDatabaseItem* home = groupElsewhere(item)) {
        outcome.added.push_back(&home->addChild(copy->clone()));
    }
    outcome.added.insert(outcome.added.begin(), &item.parent()->addChild(std::move(copy)));
    return outcome;
}

std::vector<KorDSMUsage> usersThatForbidDeleting(const KorDSMDatabaseItem& item) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    const SourceRequest source(item);
    if (!family || !family->isUsed || !family->isUsed(KorOdbcKey(item.recordKey())))
        return {};
    return KorDSMWhereUsed::usagesOf(item);
}

namespace {

bool deleteRow(eTableType table, std::int32_t key) {
    return announcedOrReported(KorOdbcMan::deleteRecord(table, KorOdbcKey(key), KorOdbcMan::kThisRow));
}

// The rows that say which views are listed in a category: parts of the views, which know nothing else.
std::vector<std::int32_t> listingsIn(const KorDSMDatabaseItem& item) {
    std::vector<std::int32_t> rows;
    if (item.type() != KorDSMDefines::kDetailStyleCategory)
        return rows;
    for (const Referrer& referrer :
         StyleDatabases::current().here()->referrersOf(item.tableType(), KorOdbcKey(item.recordKey())))
        if (referrer.table->type == kTableViewRequestCategory)
            rows.push_back(referrer.key);
    return rows;
}

bool deleteRows(const KorDSMDatabaseItem& item) {
    for (const std::int32_t listing : listingsIn(item))
        if (!deleteRow(kTableViewRequestCategory, listing))
            return false;
    if (!deleteRow(item.tableType(), item.recordKey()))
        return false;
    StructDetailMaster master;
    return !needsMaster(item) || (readMaster(item, master) && deleteRow(kTableDetailMaster, master.key));
}

// Nothing uses the row any more: what is still shown of it below other records is out of date, and those show
// their children anew when they are opened. What is filed goes with the item.
void dropTwins(KorDSMDatabaseItem& item, DeleteOutcome& outcome) {
    while (!item.equalItems().isEmpty()) {
        KorDSMDatabaseItem* twin = item.equalItems()[0];
        KorDSMDatabaseItem* parent = twin->parent();
        twin->unlinkEqualItems();
        if (parent && KorDSMDefines::isGroupType(parent->type())) {
            outcome.removed.push_back(parent->releaseChild(*twin));
        } else if (parent && parent != item.parent() && parent->record()) {
            parent->dropDependents();
        }
    }
}

} // namespace

KorString inUseText() {
    // The host's prompts write a line break as these two characters.
    return Prompts::ups(kInUse).replaced("\\n", "\n");
}

int viewsListedIn(const KorDSMDatabaseItem& category) {
    const SourceRequest source(category);
    return static_cast<int>(listingsIn(category).size());
}

DeleteOutcome deleteItem(KorDSMDatabaseItem& item) {
    return deleteItems({&item});
}

namespace {

// Fills in why the items cannot be deleted, if so. Their source must be current.
bool forbidsDeleting(const std::vector<KorDSMDatabaseItem*>& items, DeleteOutcome& outcome) {
    outcome.refusal = whyNotWritable(*items.front());
    if (outcome.refusal.isEmpty())
        outcome.refusal = whyIncomplete();
    for (const KorDSMDatabaseItem* item : items) {
        if (!outcome.refusal.isEmpty())
            break;
        outcome.users = usersThatForbidDeleting(*item);
        if (!outcome.users.empty())
            outcome.refusal = inUseText();
    }
    return !outcome.refusal.isEmpty();
}

} // namespace

DeleteOutcome deleteItems(const std::vector<KorDSMDatabaseItem*>& items) {
    DeleteOutcome outcome;
    const bool areDeletable = !items.empty() && std::ranges::all_of(items, [](const auto* item) {
        return canDelete(item->type()) && item->parent();
    });
    if (!areDeletable)
        return outcome;
    const SourceRequest source(*items.front());
    if (forbidsDeleting(items, outcome))
        return outcome;
    const auto count = static_cast<std::int64_t>(items.size());
    const PendingGroup group(count == 1 ? label(kDeleting, items.front()->record()->name)
                                        : label(kDeletingMany, KorString::number(count)));
    for (KorDSMDatabaseItem* item : items) {
        if (!deleteRows(*item))
            return outcome;
        outcome.removed.push_back(item->parent()->releaseChild(*item));
        outcome.notice = noticeFor(*item, DsmListChanged::kReload);
        dropTwins(*item, outcome);
    }
    outcome.done = true;
    return outcome;
}

} // namespace KorDSMItemCommands
