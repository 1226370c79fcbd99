#pragma once

#include "drawing/ViewScene.h"

/// The labels of a view: what its map's entries say for the objects that are seen. `drawn` is what is there
/// already. Pieces of one name get one label, except on overviews.
Primitives annotationsOf(DrawingContext& context, const ViewScene& scene, const Primitives& drawn);
