#pragma once

#include "picture/Geometry.h"
#include "records/StyleRecords.h"

#include <vector>

/// A view as the arrangement sees it.
struct ArrangedView {
    int direction = -1; ///< number of its arrangement direction; -1: it has none, 7: by the projection
    Vec3 right;         ///< of the view in the part's axes
    Vec3 up;
    bool isSection = false;
    Box2 box;        ///< of all that it has, about its reference
    Vec2 moved = {}; ///< where its reference comes to stand: the answer
};

/// Whether a view of this arrangement direction stands where the projection puts it: it names no side itself.
bool isPlacedByProjection(int direction);

/// Places views on the sheet. The first view that is a main view (or the first of all) stays at 0, 0. The
/// others go to the side that their direction says. One that is placed by the projection, or a further main
/// view, goes where that puts what looks from its side: in first angle the view from the left stands at the
/// right, in third angle at the left. What has no side goes into a row of its own, below all.
void arrangeViews(std::vector<ArrangedView>& views, const StructDetViewArrangeStrategy& strategy);
