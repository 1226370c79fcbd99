#pragma once

#include "drawing/DimensionLines.h"
#include "drawing/DimensionPoints.h"

/// Adds the ordinates of a request to the dimension lines, which have begun: the distances of all points,
/// which ascend along these, from one origin. Fewer than two points have none.
void addOrdinates(DrawingContext& context, const ViewScene& scene,
                  const StructDetViewDimRequestLinear& request, const std::vector<DimensionPoint>& all,
                  DimensionLines& lines);
