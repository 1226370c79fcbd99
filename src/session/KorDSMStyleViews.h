#pragma once

#include "model/items/KorDsmItems.h"
#include "session/KorDSMViewList.h"

#include <vector>

/// The views of a detail style (see `KorDSMViewList`) by the items that stand for them. The operations return
/// what changed, for `KorDSMItemUpdate`: the items of the style's views are made anew. Nothing comes back
/// when nothing was written.
namespace KorDSMStyleViews {

/// The style of which the item is a view, or the item itself where it is a style; null for others.
KorDsmDetailStyleItem* styleOf(KorDSMDatabaseItem& item);

/// Whether the item stands for a style or one of its views, and the current source may be edited.
bool canChange(KorDSMDatabaseItem& item);

/// The view slot, from 0, that a view's item stands for; -1 when it is no view of a style.
int slotOf(const KorDSMDatabaseItem& view);

/// Why the item's style can have no further view, in one sentence; empty when it can.
KorString whyFull(KorDSMDatabaseItem& item);
/// Adds a view after `item`, or at the end where `item` is the style itself. Why it could not be added stands
/// in `error`.
std::vector<KorDSMRowChange> add(KorDSMDatabaseItem& item, const KorDSMViewList::Wish& wish,
                                 KorString& error);
/// Takes a view out of its style. The view itself stays.
std::vector<KorDSMRowChange> removeView(KorDSMDatabaseItem& view);
/// Whether the view has a neighbour `step` (-1 or 1) further.
bool canMove(const KorDSMDatabaseItem& view, int step);
/// Exchanges the view with that neighbour.
std::vector<KorDSMRowChange> moveView(KorDSMDatabaseItem& view, int step);

} // namespace KorDSMStyleViews
