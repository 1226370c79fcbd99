#pragma once

#include "drawing/ViewScene.h"

/// Break lines where the edge of a view cuts through parts that go on behind it.
Primitives brokenEdgesOf(DrawingContext& context, const ViewScene& scene);
