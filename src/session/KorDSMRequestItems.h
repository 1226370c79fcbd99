#pragma once

#include "model/items/KorDsmAddInContentItem.h"

#include <vector>

/// The items of the view request dialog: sources, below each its categories, below each of these the view
/// requests that are filed in it. A request that is filed in several stands in each.
namespace KorDSMRequestItems {

/// Where a request can be chosen: in all sources, Standard first and User last, or in the current one alone.
std::vector<SourceId> sources(bool all);

/// The node of a source, without anything below it.
std::unique_ptr<KorDsmAddInRequestItem> makeSource(SourceId source, std::int32_t icon);
/// Makes what is below the node of a source anew: categories in the order of the selection trees, requests by
/// name, and last those that are filed nowhere. Items from before are gone.
void fill(KorDsmAddInRequestItem& source);

/// The first item of the view request with this key in the source; null for none.
KorDSMDatabaseItem* find(const KorDSMDatabaseItem& root, SourceId source, std::int32_t key);
/// The same in whichever source has it: the current one, else the first one.
KorDSMDatabaseItem* find(const KorDSMDatabaseItem& root, std::int32_t key);

/// The key of the category that is selected or in which the selected request stands; 0 for none.
std::int32_t categoryOf(const KorDSMDatabaseItem& item);

} // namespace KorDSMRequestItems
