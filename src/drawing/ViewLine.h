#pragma once

#include "picture/Geometry.h"

#include <cstdint>
#include <utility>
#include <vector>

/// A line of a view, in millimetres of the model.
struct ViewLine {
    enum eKind : std::uint8_t { kEdge, kCut, kPath };

    Vec2 a;
    Vec2 b;
    double depth = 0; ///< of its middle
    bool visible = true;
    eKind kind = kEdge;
    int object = -1; ///< index in the part
    int circle = -1; ///< index in `circles` of the picture, where it is a piece of one that is seen round
};

/// A circle that is seen round.
struct ViewCircle {
    Vec2 centre;
    double radius = 0;
};

/// What a camera sees of a part.
struct ViewLines {
    std::vector<ViewLine> lines;
    std::vector<ViewCircle> circles;
    std::vector<std::pair<int, std::vector<Loop2>>> cutFaces; ///< per object
};
