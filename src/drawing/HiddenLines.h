#pragma once

#include "drawing/SamplePart.h"
#include "drawing/ViewCamera.h"
#include "drawing/ViewLine.h"

/// Projects the objects `shown` of a part, cuts them where the camera's box begins, and tells visible edges
/// from hidden ones. Edges that lie upon each other are given once: the visible one, the nearer one. Bodies
/// may pierce each other.
ViewLines linesOf(const SamplePart& part, const std::vector<int>& shown, const ViewCamera& camera);
