#pragma once

#include "model/items/KorDSMDatabaseItem.h"

/// Keeps the tree items that show one record in line with it.
namespace KorDSMTwins {

/// After a write to the item's record: takes the row as it now is into the item and into all its equal
/// items. The item's source must be current.
void recordWritten(KorDSMDatabaseItem& item);

/// Sends the item's entry the name that it now has to show.
void sendName(const KorDSMDatabaseItem& item);
/// The same for the item and all its equal items.
void showName(KorDSMDatabaseItem& item);

} // namespace KorDSMTwins
