#pragma once

#include "drawing/Arrangement.h"
#include "drawing/DrawingContext.h"

/// A view of a drawing about its reference, before it has its place on the sheet.
struct DrawnView {
    ViewPicture picture; ///< without primitives where it is left out
    Primitives written;  ///< of these its texts and dimensions, which nothing else is to cover
    ArrangedView place;  ///< but for its box and where it is moved
    RowReads::Numbers reads;
    std::vector<std::string> notes;
    std::set<std::pair<std::int32_t, int>> labelledBefore; ///< what had a label when it was drawn
    std::set<std::pair<std::int32_t, int>> labelledAfter;

    /// Draws the view request of this key; `askedFor` where it is drawn whatever its select mode says.
    static DrawnView draw(DrawingContext& context, std::int32_t key, bool askedFor);
};
