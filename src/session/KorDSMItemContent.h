#pragma once

#include "model/items/KorDSMDatabaseItem.h"

/// What is read only when it is to be shown: the records of an add-in, and what a record depends on.
namespace KorDSMItemContent {

/// Reads what an add-in holds, if it was not opened yet. Returns whether it was read.
bool load(KorDSMDatabaseItem& item);
/// Reads what is below the item, if it was not opened yet.
void loadChildren(KorDSMDatabaseItem& item);

/// Whether there is, or can be, anything below the item. Without `fullExpand` what a record depends on is
/// shown, but not opened in turn.
bool canBeOpened(const KorDSMDatabaseItem& item, bool fullExpand);

} // namespace KorDSMItemContent
