#pragma once

#include "drawing/Primitive.h"

/// A label that wants a place.
struct WantedLabel {
    Vec2 anchor; ///< what it points to
    Vec2 size;
    double distance = 8; ///< from its anchor where nothing is in the way
    double farthest = 60;
    int side = 0; ///< tried first: 0 nearest, 1 left, 2 right, 3 above, 4 below
    bool mayCover = false;
};

/// Places labels one after the other, so that they keep clear of each other and of lines.
class LabelPlacing {
public:
    /// What labels keep clear of: its lines and texts.
    explicit LabelPlacing(const Primitives& lines);

    /// The middle of the label. One that finds no free place within reach stays near, and covers something.
    Vec2 place(const WantedLabel& label);
    /// Takes a place that was found otherwise.
    void take(Vec2 middle, Vec2 size);
    /// Whether a label would cover another one.
    bool coversLabel(const Box2& box) const;

private:
    bool coversLine(const Box2& box) const;

    std::vector<std::pair<Vec2, Vec2>> m_lines;
    std::vector<Box2> m_taken;
};
