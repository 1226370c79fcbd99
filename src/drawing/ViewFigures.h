#pragma once

#include "drawing/ViewScene.h"

/// The lines of a view on its sheet: edges, cut faces, centre lines, break lines, grid and levels.
Primitives edgesOf(DrawingContext& context, const ViewScene& scene);
/// Hatches of cut faces.
Primitives hatchesOf(DrawingContext& context, const ViewScene& scene);
/// Axes of round things.
Primitives centreLinesOf(DrawingContext& context, const ViewScene& scene);
/// Grid lines and levels.
Primitives gridOf(DrawingContext& context, const ViewScene& scene);
/// Where the view is clipped.
Primitives breaksOf(DrawingContext& context, const ViewScene& scene);
/// The north compass; `box` is what is drawn already.
Primitives compassOf(DrawingContext& context, const ViewScene& scene, const Box2& box);
