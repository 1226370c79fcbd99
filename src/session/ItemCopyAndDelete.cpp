#include "base/KorAssert.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMRecordCommands.h"
#include "session/PendingGroup.h"

#include <algorithm>

// Copying and deleting.

namespace KorDSMItemCommands {

using namespace ItemCommandParts;

namespace {

constexpr int kDeleting = 244;     // "deletion of "%s""
constexpr int kReadOnly = 200;     // ""%s" can be read, not changed"
constexpr int kDeletingMany = 493; // "deletion of %s definitions"
constexpr int kInUse = 33521;

// Announces a write that was made.
WriteResult announced(WriteResult result) {
    if (result.isStored())
        KorDSMMainWindow::sendMessage(DsmDataChanged());
    return result;
}

// The same for writes that must not fail here.
WriteResult announcedOrReported(const WriteResult& write) {
    const int result = write.code();
    KorAssert::check(result > 0, "result > 0");
    return announced(write);
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

CopyResult copyItem(KorDSMDatabaseItem& item, const KorString& newName) {
    CopyResult outcome;
    if (!canCopy(item.type()) || !item.parent())
        return outcome;
    const SourceRequest source(item);
    KorDSMRecordCommands::Outcome copied =
        KorDSMRecordCommands::copy(KorDSMItemSource::sourceOf(&item), rowOf(item), newName);
    const RowRef row = copied.row;
    if (!outcome.settle(std::move(copied)))
        return outcome;
    std::unique_ptr<KorDSMDatabaseItem> copy = item.clone();
    copy->updateRecord(*CurrentRows::find(row.table, KorOdbcKey(row.key)));
    if (const auto complete = KorDSMFamilies::of(copy->type())->complete)
        complete(*copy);
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
    return KorDSMWhereUsed::usagesHere(KorDSMItemSource::sourceOf(&item),
                                       {item.tableType(), item.recordKey()});
}

namespace {

WriteResult deleteRow(eTableType table, std::int32_t key) {
    return announcedOrReported(StyleDatabases::current().remove(table, KorOdbcKey(key)));
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

WriteResult deleteRows(const KorDSMDatabaseItem& item) {
    for (const std::int32_t listing : listingsIn(item))
        if (WriteResult result = deleteRow(kTableViewRequestCategory, listing); result.isFailed())
            return result;
    WriteResult result = deleteRow(item.tableType(), item.recordKey());
    if (result.isFailed() || !needsMaster(item.tableType()))
        return result;
    StructDetailMaster master;
    return readMaster(rowOf(item), master) ? deleteRow(kTableDetailMaster, master.key)
                                           : WriteRefusal::noRow();
}

// Nothing uses the row any more: what is still shown of it below other records is out of date, and those show
// their children anew when they are opened. What is filed goes with the item.
void dropTwins(KorDSMDatabaseItem& item, DeleteResult& outcome) {
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

DeleteResult deleteItem(KorDSMDatabaseItem& item) {
    return deleteItems({&item});
}

namespace {

// Fills in why the items cannot be deleted, if so. Their source must be current.
bool forbidsDeleting(const std::vector<KorDSMDatabaseItem*>& items, DeleteResult& outcome) {
    outcome.error = whyNotWritable(*items.front()).toStdString();
    if (outcome.error.empty())
        outcome.error = whyIncomplete().toStdString();
    for (const KorDSMDatabaseItem* item : items) {
        if (!outcome.error.empty())
            break;
        outcome.users = usersThatForbidDeleting(*item);
        if (!outcome.users.empty())
            outcome.error = inUseText().toStdString();
    }
    return !outcome.error.empty();
}

} // namespace

DeleteResult deleteItems(const std::vector<KorDSMDatabaseItem*>& items) {
    DeleteResult outcome;
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
        if (!outcome.settle(deleteRows(*item)))
            return outcome;
        outcome.removed.push_back(item->parent()->releaseChild(*item));
        outcome.notice = noticeFor(*item, DsmListChanged::kReload);
        dropTwins(*item, outcome);
    }
    return outcome;
}

} // namespace KorDSMItemCommands
