#pragma once

#include "model/items/KorDsmItems.h"

/// What records use, as child items. The record's source must be current.
namespace KorDSMDependencies {

/// Whether items of this type can have dependent children.
bool canHaveDependents(KorDSMDefines::eItemType type);

/// Creates the dependent children of `item` from the current source and sets its `m_bExpanded`. Records
/// that cannot be read are left out. Does nothing when the item is expanded already.
void createChildren(KorDSMDatabaseItem& item);

/// Brings the item's record in line with the current source. Returns false when the row is gone.
bool refreshRecord(KorDSMDatabaseItem& item);

} // namespace KorDSMDependencies
