#pragma once

#include "drawing/FaceGrid.h"
#include "drawing/Solid.h"
#include "drawing/ViewCamera.h"

/// A solid as a camera sees it: without what lies before the camera's box.
struct CutSolid {
    std::vector<ViewFace> faces; ///< those that look at who looks, and what the cut closes
    std::vector<Loop2> loops;    ///< of the cut face
};

/// `box` lies around the solid.
CutSolid cutSolid(const Solid& solid, const Box3& box, const ViewCamera& camera);
