#pragma once

#include <cstdint>
#include <filesystem>
#include <set>

/// What is to be drawn.
struct DrawingRequest {
    std::int32_t style = 0;        ///< key of the detail style; 0: a view alone, without a style
    std::int32_t view = 0;         ///< key of the one view request that is wanted; 0: all of the style
    std::filesystem::path support; ///< folder of line type files without a path
    std::set<std::int32_t> entriesOff = {}; ///< keys of entries of maps that decide nothing, on trial
    bool repeatsDimensions = false;         ///< also those that say what others of the view say already

    bool operator==(const DrawingRequest&) const = default;
};
