#pragma once

#include "picture/Geometry.h"

#include <vector>

/// Finds places for the texts of dimension lines, so that none covers another one.
class DimensionTexts {
public:
    /// One stretch of a dimension line, on the sheet.
    struct Span {
        Vec2 from;
        Vec2 to;
        Vec2 outward;         ///< of length 1: from the line away from the view
        bool isFirst = false; ///< no other stretch of the line comes before it
        bool isLast = false;  ///< or behind it
    };
    struct Place {
        Vec2 middle;
        std::vector<Vec2> leader; ///< from the stretch to the text; empty where none is needed
    };

    /// Lines that texts are kept away from as far as there is room upon their stretch.
    void avoid(const std::vector<std::pair<Vec2, Vec2>>& lines);
    /// The place of a text of this length and height, which is taken from now on: upon its stretch; where
    /// that is too short, beside the line's end, or below the line, or further away with a leader.
    Place place(const Span& span, Vec2 size);
    /// Takes the place of a text along a line of the direction `along`, of length 1.
    void take(Vec2 middle, Vec2 along, Vec2 size);

private:
    struct Text {
        Vec2 middle;
        Vec2 along;
        Vec2 half;
    };
    static bool meet(const Text& a, const Text& b);
    bool isFree(const Text& text) const;
    bool isCrossed(const Text& text) const;

    std::vector<Text> m_taken;
    std::vector<Text> m_lines; ///< as texts without height
};
