#pragma once

#include "model/KorDSMMessages.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/WriteResult.h"
#include "session/KorDSMWhereUsed.h"

#include <memory>
#include <vector>

/// The commands that change which definitions exist, what they are called and where they are filed. Each is
/// one step of undo. They write to the item's own source, announce each write, and keep the items of the data
/// structure right; what is then to be done in a window, they return.
namespace KorDSMItemCommands {

/// A list-change notice (message 1045) that the main dialog has to send to the pages which list records of
/// this kind.
struct ListNotice {
    int senderPageCode = 0;
    int action = DsmListChanged::kAdded;
    KorString groupName;
    KorString name;
    std::vector<int> receivers; ///< page codes; empty: no notice is needed

    /// What the notice says: group and name with the path delimiter of the combos between them.
    KorString path(const KorString& delimiter) const {
        return KorString::format("%s%s%s", {groupName, delimiter, name});
    }
};

/// What a command came to. A failure without a sentence is one that the user was told already, or a command
/// that the item does not have.
struct CommandResult : WriteResult {
    CommandResult() { kind = kFailed; }

    /// Takes over what came of the command's writes. Returns whether they are stored.
    bool settle(WriteResult writes) {
        static_cast<WriteResult&>(*this) = std::move(writes);
        return isStored();
    }

    ListNotice notice = {};
};

/// Whether items of this type are copied and deleted.
bool canCopy(KorDSMDefines::eItemType type);
bool canDelete(KorDSMDefines::eItemType type);

struct CopyResult : CommandResult {
    /// The new items, in the structure already and owned there: the copy beside the original first; when the
    /// original is shown as a part of another record, also the one in its group. Each needs a tree entry;
    /// the first one's is to be selected.
    std::vector<KorDSMDatabaseItem*> added;
};
/// Stores a copy of the item's record under `newName` as a new row of the same source. A detail style gets a
/// master with the first free number from its original's on. When it fails nothing is changed.
CopyResult copyItem(KorDSMDatabaseItem& item, const KorString& newName);

/// The refusal to delete what is in use.
KorString inUseText();
/// Who uses the item's record in its own source, which forbids to delete it; empty when it can be deleted.
std::vector<KorDSMUsage> usersThatForbidDeleting(const KorDSMDatabaseItem& item);

struct DeleteResult : CommandResult {
    /// The items that are gone from the structure: the deleted one first. Their entries are still there:
    /// remove them while these live.
    std::vector<std::unique_ptr<KorDSMDatabaseItem>> removed;
    /// Refused because of these.
    std::vector<KorDSMUsage> users;
};
/// Deletes the item's row with its parts, for a detail style also its master, for a category also the places
/// of views in it. A record that is in use is not deleted. Where the master cannot be read, the style's row
/// is deleted, but the command counts as not done and the item stays.
DeleteResult deleteItem(KorDSMDatabaseItem& item);
/// The same for several items of one source that lie in no branch of one another, as one step of undo. One
/// that is in use keeps all. The rows of `also` go in the same step (see `KorDSMRecordCommands::remove`);
/// their items have to follow.
DeleteResult deleteItems(const std::vector<KorDSMDatabaseItem*>& items, const std::vector<RowRef>& also = {});
/// How many views are listed in a category and leave it when it is deleted; 0 for other items.
int viewsListedIn(const KorDSMDatabaseItem& category);

/// Why nothing can be changed in an open source, or in the item's; empty when something can, and for no open
/// source. Commands say so before they ask the user for anything.
KorString whyNotWritable(SourceId source);
KorString whyNotWritable(const KorDSMDatabaseItem& item);
/// The same in a few words, for the status line.
KorString readOnlyNote(const KorDSMDatabaseItem& item);
/// The same in all words: where a server keeps the source, also why it lets it be read only, and what can be
/// done about that. For tooltips, and where nothing else says it.
KorString whyOnlyReadable(SourceId source);
KorString whyOnlyReadable(const KorDSMDatabaseItem& item);
/// Gives the item's record another name; for a detail style also its master. All items that show the record
/// take the name. Refused for an empty name, for one that is taken (upper and lower case differ), and where
/// the source is read-only. The name that it has already is no change.
CommandResult renameItem(KorDSMDatabaseItem& item, const KorString& newName);

/// Why the item cannot be moved to the group; empty when it can.
KorString whyNotMovable(const KorDSMDatabaseItem& item, const KorDSMDatabaseItem& group);
inline bool canMove(const KorDSMDatabaseItem& item, const KorDSMDatabaseItem& group) {
    return whyNotMovable(item, group).isEmpty();
}
/// Files the item's record under the group or category, and puts the item there as the last child. Its entry
/// is still in the old place: delete it and add one below the new parent.
CommandResult moveToGroup(KorDSMDatabaseItem& item, KorDSMDatabaseItem& group);

} // namespace KorDSMItemCommands
