#pragma once

#include "drawing/SamplePart.h"

#include <cstdint>
#include <vector>

class StyleSource;

/// A sample part that can be chosen.
struct OfferedPart {
    std::string name; ///< of its file
    const SamplePart* part = nullptr;
};

/// The name of the part that suits a style of the source best. Those are asked that the style's category
/// names by one of their words, or all where it names none. Among these it is the one whose word stands first
/// in the style's name, of several the longest word; where the name says nothing, the one whose objects the
/// maps of the style's views tell apart best. The first one where nothing tells; empty without any.
std::string suitingPart(StyleSource& source, std::int32_t style, const std::vector<OfferedPart>& parts);
