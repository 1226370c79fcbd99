#pragma once

#include "base/Result.h"
#include "model/KorDSMDataStructure.h"

/// Creates records from nothing: a detail style, annotation strategy, dimension request or qualifier set with
/// the defaults of its kind.
namespace KorDSMNewItem {

/// The kind that "new" makes where `item` is selected: the kind of the item, or what is filed in its group.
/// `kNoType` where nothing can be made.
KorDSMDefines::eItemType typeAt(const KorDSMDatabaseItem& item);

/// The name of the category or group in which `item` is, or is filed: where "new" proposes to file what it
/// makes. Empty where it is filed nowhere.
KorString groupNameAt(const KorDSMDatabaseItem& item);
/// The item of the category or group with this key in which records of the kind are filed, in the section of
/// such groups; loads the section's content where it is not yet. Null when the source has no such row.
KorDSMDatabaseItem* findGroup(KorDSMDataStructure& structure, KorDSMDefines::eItemType type, SourceId source,
                              std::int32_t key);

/// Appends the record, filed under the category or group with this key, as one step of undo in the current
/// source; a detail style gets a master with a free pair of numbers. Returns the new item, already below
/// `group`, which owns it; after a failure nothing was written.
Result<KorDSMDatabaseItem*> create(KorDSMDefines::eItemType type, const KorString& name,
                                   KorDSMDatabaseItem& group);

} // namespace KorDSMNewItem
