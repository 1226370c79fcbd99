#pragma once

#include "drawing/ViewScene.h"

/// A point that is dimensioned.
struct DimensionPoint {
    Vec3 model;
    Vec2 flat; ///< in the view, mm of the model
    int object = -1;
};

/// The points that a selection takes in a view, along a direction of the view: ascending, each place once.
/// Nothing for a selection that is not there.
std::vector<DimensionPoint> pointsOf(DrawingContext& context, const ViewScene& scene, std::int32_t selection,
                                     Vec2 direction);

/// Sorts points along the direction. Of several at one place, which is `sameness` millimetres long, the one
/// that lies farthest to its right is kept.
void keepEachPlaceOnce(std::vector<DimensionPoint>& points, Vec2 direction, double sameness = 0.5);
