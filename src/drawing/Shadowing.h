#pragma once

#include "drawing/StyleRows.h"

#include <set>

/// An entry of a map that can never decide, whatever the objects are.
struct ShadowedEntry {
    std::int32_t entry = 0; ///< key
    std::int32_t by = 0;    ///< key of the entry before that takes all that it could
    bool isSameSet = false; ///< both have the same qualifier set
    std::string sentence;   ///< for the user: why, and what to do
};

/// Which entries never decide, as far as that is proven from the records: the same set comes before, or one
/// that fits whatever it fits. What is not proven is not told.
namespace Shadowing {

/// Of one map, in the order of its entries. Those that are off neither act nor take anything.
std::vector<ShadowedEntry> of(StyleSource& source, std::int32_t map,
                              const std::set<std::int32_t>& entriesOff = {});

} // namespace Shadowing
