#pragma once

#include "drawing/Pens.h"
#include "drawing/SamplePart.h"

/// What all views of one drawing share.
struct DrawingContext {
    StyleRows& rows;
    Pens& pens;
    const StructDetailStyle& style;
    const SamplePart& part;
    ProvenancePtr chain;    ///< of the style
    std::vector<int> shown; ///< indexes of the objects that the style selects
    bool isOverview = false;

    const PartObject& object(int index) const { return part.objects[static_cast<std::size_t>(index)]; }
};

/// The objects of the context's part that its style selects; sets whether the drawing is an overview.
void selectObjects(DrawingContext& context);
