#pragma once

#include "records/RowRef.h"
#include "records/WriteResult.h"
#include "session/KorDSMWhereUsed.h"

#include <vector>

struct ImportReport;

/// Making, copying, renaming and deleting records of any kind by their rows, whatever shows them. Each
/// command is one step of undo in the record's own source. One that is not done leaves nothing behind.
namespace KorDSMRecordCommands {

/// What a command came to.
struct Outcome : WriteResult {
    Outcome() { kind = kFailed; }

    RowRef row = {};                     ///< the record that was made or changed
    std::vector<KorDSMUsage> users = {}; ///< refused because these use the record
    std::vector<KorString> filed = {};   ///< refused because these are filed under it
};

/// Whether users make records of this kind: those that have names which the editor asks for.
bool isMade(eTableType table);
/// The item type by which dialogs and words know records of this kind; `kNoType` for none.
KorDSMDefines::eItemType itemTypeOf(eTableType table);
/// The table of the groups or categories in which records of this kind are filed; `kNoTable` for none.
eTableType groupsOf(eTableType table);

/// Makes a record with the defaults of its kind, filed under the group with this key where such records are
/// filed. A view is listed in that category, or in none for 0. A detail style gets a master with a free pair
/// of numbers; a group or category comes last.
Outcome create(SourceId source, eTableType table, const KorString& name, std::int32_t group);

enum class eDepth : std::uint8_t {
    kRecord,     ///< the record with its parts: what it uses is used by the copy too
    kAllThatUsed ///< all that it uses and users make is copied along, under free names
};
/// Copies a record within its source. A detail style gets a master with the first free number from its
/// original's on.
Outcome copy(SourceId source, RowRef row, const KorString& name, eDepth depth = eDepth::kRecord);
/// Copies records within their source, each under the first free name like its own, as one step; there is at
/// least one. The rows become those of the copies.
Outcome copyEach(SourceId source, std::vector<RowRef>& rows);
/// Copies a record of one source into another one with all that it depends on. What the target has with the
/// same name and content is used, what has another content there comes in under a free name (see `report`).
Outcome copyInto(SourceId to, SourceId from, RowRef row, const KorString& name, ImportReport& report);

/// Gives a record another name; for a detail style also its master. The name that it has already is no
/// change.
Outcome rename(SourceId source, RowRef row, const KorString& name);

/// The rows that say which views are listed in a category of an open source; none for other records. They are
/// parts of the views, which know nothing else of it.
std::vector<RowRef> listingsIn(SourceId source, RowRef category);

enum class eFiled : std::uint8_t {
    kForbids, ///< what something is filed under is not deleted
    kIsLeft   ///< it is, and what is filed under it stays, filed nowhere
};
/// Deletes records with their parts, for a detail style also its master, for a category also the places of
/// views in it; there is at least one. What other records of its source use is not deleted. One that stays
/// keeps the others. In the same step `also` goes, as far as nothing uses it then (see
/// `KorDSMRecordState::leftUnused`).
Outcome remove(SourceId source, const std::vector<RowRef>& rows, eFiled filed = eFiled::kForbids,
               const std::vector<RowRef>& also = {});
inline Outcome remove(SourceId source, RowRef row) {
    return remove(source, std::vector<RowRef>{row});
}

} // namespace KorDSMRecordCommands
