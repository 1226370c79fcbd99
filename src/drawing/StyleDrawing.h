#pragma once

#include "base/Result.h"
#include "drawing/Primitive.h"
#include "drawing/SamplePart.h"

#include <filesystem>
#include <set>

class StyleSource;

/// What is to be drawn.
struct DrawingRequest {
    std::int32_t style = 0;        ///< key of the detail style
    std::int32_t view = 0;         ///< key of the one view request that is wanted; 0: all of the style
    std::filesystem::path support; ///< folder of line type files without a path
    std::set<std::int32_t> entriesOff = {}; ///< keys of entries of maps that decide nothing, on trial
};

/// Draws a sample part as a detail style says. Whatever is damaged, missing or impossible is left out and
/// told in the drawing's notes; nothing is written, and nothing that only a host knows is made up. A style
/// that is not there gives a drawing without views.
Drawing drawStyle(StyleSource& source, const SamplePart& part, const DrawingRequest& request);
