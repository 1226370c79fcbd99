#pragma once

#include "data/RowUsers.h"
#include "model/KorDSMDataStructure.h"

#include <functional>
#include <vector>

/// A record that uses another one, as it is shown to users.
struct KorDSMUsage {
    SourceId source;
    RowRef row;         ///< in that source
    KorString database; ///< name of the source
    KorString kind;     ///< what such records are called
    KorString name;     ///< run name of the record
    KorString as;       ///< caption of the column in which it, or a part of it, refers to the other record

    bool operator==(const KorDSMUsage&) const = default;
};

/// Who uses a record, and where in the trees that is.
namespace KorDSMWhereUsed {

/// The name of a source as trees and combos show it.
KorString sourceName(SourceId source);

/// Who uses the row: in its own source the row itself, in all other open sources the one of the same table
/// and run name. A source at a time, in the order Standard, User, add-ins.
std::vector<KorDSMUsage> usagesOf(SourceId source, RowRef row);
/// Who uses the row in its own source: what a change of it reaches, and what forbids to delete it.
std::vector<KorDSMUsage> usagesHere(SourceId source, RowRef row);
/// The same, and where a single record uses the row, who uses that in turn, up to the first record with
/// several users: all that a change of a shared row reaches.
std::vector<KorDSMUsage> usagesUpToSharing(SourceId source, RowRef row);
/// Who uses an item's record; nothing for an item without one.
std::vector<KorDSMUsage> usagesOf(const KorDSMDatabaseItem& item);

/// Calls when nothing is being filled, stored or exchanged: at once, or when that has ended.
void whenSettled(std::function<void()> look);

/// Why `usagesOf` may lack some: one sentence for each open source that cannot be read whole, a space between
/// them. Empty when none lacks. Reads what was not read yet.
KorString whyIncomplete();

/// The item that shows a row, for going there: the one in its category or group where the row is filed, else
/// one below an item that uses it. Content that has not been loaded yet is loaded, and children are made, on
/// the way. Null when no tree shows the row.
KorDSMDatabaseItem* findItem(KorDSMDataStructure& structure, SourceId source, RowRef row);

/// The content node of a source below which rows of this table are filed or are the groups, loaded or not.
/// Null for other tables.
KorDsmAddInContentItem* contentOf(KorDSMDataStructure& structure, SourceId source, eTableType table);

/// The item of a category or group, where the content of its source is loaded; else null.
KorDSMDatabaseItem* findGroup(KorDSMDataStructure& structure, SourceId source, RowRef group);
/// The item of a category, of a group, or of a record in its group, as far as items are loaded; else null.
KorDSMDatabaseItem* findLoaded(KorDSMDataStructure& structure, SourceId source, RowRef row);

/// The item on whose pages the row is edited: its own, or that of the nearest row which it is a part of or
/// which uses it. Null when no tree shows any.
KorDSMDatabaseItem* findEditor(KorDSMDataStructure& structure, SourceId source, RowRef row);
/// The same among an item and what is below it.
KorDSMDatabaseItem* findEditorBelow(KorDSMDatabaseItem& top, RowRef row);
/// Whether the item is such a one for a row of its source.
bool isEditor(const KorDSMDatabaseItem& item, RowRef row);

} // namespace KorDSMWhereUsed
