#pragma once

#include "model/items/KorDsmItems.h"
#include "session/KorDSMUndo.h"

#include <vector>

/// Which views a detail style has, and in which order. Each change is one step of undo and writes only the
/// view slots of the style that get another view; empty slots close up. The operations return what changed,
/// for `KorDSMItemUpdate`: the items of the style's views are made anew. Nothing comes back when nothing was
/// written.
namespace KorDSMStyleViews {

/// Keys of views in their order, without the empty slots between them.
using Views = std::vector<std::int32_t>;

/// The views of a style, which exists.
Views viewsOf(SourceId source, std::int32_t style);
/// How many views a style can have.
std::size_t mostViews();
/// Gives the style these views and no others, `mostViews` at most.
std::vector<KorDSMRowChange> setViews(SourceId source, std::int32_t style, const Views& views);

/// The style of which the item is a view, or the item itself where it is a style; null for others.
KorDsmDetailStyleItem* styleOf(KorDSMDatabaseItem& item);

/// Whether the item stands for a style or one of its views, and the current source may be edited.
bool canChange(KorDSMDatabaseItem& item);

/// The view slot, from 0, that a view's item stands for; -1 when it is no view of a style.
int slotOf(const KorDSMDatabaseItem& view);

/// The views that a style can get, by name, in the order in which people sort names. Of the current source.
std::vector<KorString> candidates();

/// Whether the style has a slot left.
bool hasRoom(const KorDsmDetailStyleItem& style);
/// Adds the view of this name after `item`, or at the end where `item` is the style itself.
std::vector<KorDSMRowChange> addView(KorDSMDatabaseItem& item, const KorString& name);
/// Makes a view with the defaults of such records and adds it in the same way, as one step. Why it could not
/// be made stands in `error`.
std::vector<KorDSMRowChange> addNewView(KorDSMDatabaseItem& item, const KorString& name, KorString& error);
/// Takes a view out of its style. The view itself stays.
std::vector<KorDSMRowChange> removeView(KorDSMDatabaseItem& view);
/// Whether the view has a neighbour `step` (-1 or 1) further.
bool canMove(const KorDSMDatabaseItem& view, int step);
/// Exchanges the view with that neighbour.
std::vector<KorDSMRowChange> moveView(KorDSMDatabaseItem& view, int step);

} // namespace KorDSMStyleViews
