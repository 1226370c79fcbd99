#pragma once

#include "model/items/KorDsmItems.h"

/// What records use, as child items. The record's source must be current.
namespace KorDSMDependencies {

// The dependent children of each class, made from the current source. Records that cannot be read are left
// out.

void addDependents(KorDsmViewRequestItem& item);
void addDependents(KorDsmReprMapRuleItem& item);
void addDependents(KorDsmReprMapItem& item);
void addDependents(KorDsmAnnotationStrategyItem& item);
void addDependents(KorDsmViewDimensioningItem& item);
void addDependents(KorDsmDimRequestItem& item);
void addDependents(KorDsmPointSelectionItem& item);

/// Whether items of this type can have dependent children.
bool canHaveDependents(KorDSMDefines::eItemType type);

/// Creates the dependent children of `item` and sets its `m_bExpanded`. Does nothing when the item is
/// expanded already.
void createChildren(KorDSMDatabaseItem& item);

/// Brings the item's record in line with the current source. Returns false when the row is gone.
bool refreshRecord(KorDSMDatabaseItem& item);

} // namespace KorDSMDependencies
