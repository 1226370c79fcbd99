#pragma once

#include "model/items/KorDSMDatabaseItem.h"

/// Creates records from nothing: a detail style, annotation strategy, dimension request or qualifier set with
/// the defaults of its kind.
namespace KorDSMNewItem {

/// The kind that "new" makes where `item` is selected: the kind of the item, or what is filed in its group.
/// `kNoType` where nothing can be made.
KorDSMDefines::eItemType typeAt(const KorDSMDatabaseItem& item);

/// Appends the record, filed under the category or group with this key, as one step of undo in the current
/// source; a detail style gets a master with a free pair of numbers. Returns the new item, already below
/// `group`, or null when nothing was written.
KorDSMDatabaseItem* create(KorDSMDefines::eItemType type, const KorString& name, KorDSMDatabaseItem& group);
/// Why `create` made nothing of the kind in the current source, in one sentence; empty where nothing is
/// known.
KorString whyNotMade(KorDSMDefines::eItemType type);

} // namespace KorDSMNewItem
