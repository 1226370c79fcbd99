#pragma once

#include "picture/Geometry.h"

#include <cstdint>

/// How a leader leaves its label.
struct LeaderShape {
    enum eFrom : std::uint8_t {
        kLine,   ///< the line below the label
        kSymbol, ///< the line of a symbol, which has its ends at the sides
        kFrame,  ///< the middle of a frame's side
        kRing,   ///< a ring about the label, straight
    };
    eFrom from = kLine;
    double landing = 0; ///< level, as far as there is room
    double rim = 0;     ///< it ends so far from its anchor, the centre of something round
};

/// The way of a leader from its label, of this middle and size, to its anchor: the end of the label that is
/// nearer, where it turns, and its end. From a corner, where the label stands above or below the anchor;
/// empty where it stands upon it, or so near that there is no room.
std::vector<Vec2> leaderWay(const LeaderShape& shape, Vec2 middle, Vec2 size, Vec2 anchor);
