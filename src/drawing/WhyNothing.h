#pragma once

#include "drawing/StyleDrawing.h"

#include <span>

/// Why a field governs nothing in a drawing.
namespace WhyNothing {

/// One sentence for the user, of a column of a record of the source, where `Governed` has nothing for it in
/// the drawing that the request makes of the part.
std::string sentenceFor(StyleSource& source, const RowRef& row, int column, const SamplePart& part,
                        const DrawingRequest& request);
/// The first of other parts in which the field governs something; null where it does in none. Draws them.
const SamplePart* partThatShows(StyleSource& source, const RowRef& row, int column,
                                const DrawingRequest& request, std::span<const SamplePart* const> others);

} // namespace WhyNothing
