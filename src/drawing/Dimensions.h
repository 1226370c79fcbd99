#pragma once

#include "drawing/ViewScene.h"

/// The dimensions of a view: linear ones, ordinates, levels, radii and slopes. Lines that run across stand
/// below the view, others at its right; `outline` is what they keep clear of. Measures are millimetres of the
/// model, whatever the view cuts out.
Primitives dimensionsOf(DrawingContext& context, const ViewScene& scene);
