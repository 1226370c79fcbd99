#pragma once

#include "drawing/HiddenLines.h"
#include "drawing/Pens.h"
#include "drawing/SamplePart.h"

#include <set>

/// What all views of one drawing share.
struct DrawingContext {
    StyleRows& rows;
    Pens& pens;
    const StructDetailStyle& style;
    const SamplePart& part;
    SeenLines& seen;
    ProvenancePtr chain;    ///< of the style
    std::vector<int> shown; ///< indexes of the objects that the style selects
    bool isOverview = false;
    std::set<std::int32_t> entriesOff = {}; ///< keys of entries of maps that decide nothing
    bool repeatsDimensions = false;         ///< also those that say what others of the view say already
    std::set<std::pair<std::int32_t, int>> labelled =
        {}; ///< strategies and objects that have a label already

    const PartObject& object(int index) const { return part.objects[static_cast<std::size_t>(index)]; }
};

/// The objects of the context's part that its style selects; sets whether the drawing is an overview.
void selectObjects(DrawingContext& context);
