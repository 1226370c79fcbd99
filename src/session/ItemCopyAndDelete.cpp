#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMRecordCommands.h"

#include <algorithm>
#include <iterator>

// Copying and deleting.

namespace KorDSMItemCommands {

using namespace ItemCommandParts;

namespace {

constexpr int kReadOnly = 200; // ""%s" can be read, not changed"
constexpr int kInUse = 33521;

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

KorString whyOnlyReadable(const KorDSMDatabaseItem& item) {
    return whyOnlyReadable(KorDSMItemSource::sourceOf(&item));
}

KorString whyOnlyReadable(SourceId source) {
    StyleDatabases& databases = StyleDatabases::current();
    StyleSource* open = databases.source(source);
    const std::string why =
        open && open->store().isOnServer() ? databases.whyNotEditable(source) : std::string();
    return why.empty() ? whyNotWritable(source) : KorString(why);
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
    return KorDSMWhereUsed::usagesHere(KorDSMItemSource::sourceOf(&item), rowOf(item));
}

namespace {

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
    return static_cast<int>(
        KorDSMRecordCommands::listingsIn(KorDSMItemSource::sourceOf(&category), rowOf(category)).size());
}

DeleteResult deleteItem(KorDSMDatabaseItem& item) {
    return deleteItems({&item});
}

DeleteResult deleteItems(const std::vector<KorDSMDatabaseItem*>& items, const std::vector<RowRef>& also) {
    DeleteResult outcome;
    std::vector<RowRef> rows;
    for (const KorDSMDatabaseItem* item : items)
        if (canDelete(item->type()) && item->parent())
            rows.push_back(rowOf(*item));
    if (rows.empty() || rows.size() < items.size())
        return outcome;
    const SourceRequest source(*items.front());
    // The host does not learn that a style without a master is gone: its entry stays until the next reload.
    std::vector<KorDSMDatabaseItem*> told;
    std::ranges::copy_if(items, std::back_inserter(told), [](const KorDSMDatabaseItem* item) {
        StructDetailMaster master;
        return !needsMaster(item->tableType()) || readMaster(rowOf(*item), master);
    });
    // That a group is empty is a rule of the command in the window.
    KorDSMRecordCommands::Outcome removed = KorDSMRecordCommands::remove(
        KorDSMItemSource::sourceOf(items.front()), rows, KorDSMRecordCommands::eFiled::kIsLeft, also);
    outcome.users = std::move(removed.users);
    if (!outcome.settle(std::move(removed)))
        return outcome;
    for (KorDSMDatabaseItem* item : told) {
        outcome.removed.push_back(item->parent()->releaseChild(*item));
        outcome.notice = noticeFor(*item, DsmListChanged::kReload);
        dropTwins(*item, outcome);
    }
    if (told.size() < items.size())
        outcome.settle(WriteRefusal::noRow());
    return outcome;
}

} // namespace KorDSMItemCommands
