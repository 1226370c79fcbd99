#pragma once

#include "picture/Geometry.h"

#include <optional>
#include <vector>

/// How far extension lines go beyond their dimension line, in millimetres.
inline constexpr double kDimensionOvershoot = 1.5;

/// Finds places for the texts of dimension lines, so that none covers another one.
class DimensionTexts {
public:
    /// One stretch of a dimension line, on the sheet.
    struct Span {
        Vec2 from;
        Vec2 to;
        Vec2 outward;         ///< of length 1: from the line away from the view
        double room = 0;      ///< from the line to the view
        bool isFirst = false; ///< no other stretch of the line comes before it
        bool isLast = false;  ///< or behind it
    };
    struct Wanted {
        Span span;
        Vec2 size;                      ///< along its direction and across
        std::vector<Vec2> middles = {}; ///< of a text across the line: where it can be, the best place first
    };
    struct Place {
        Vec2 middle;
        std::vector<Vec2> leader; ///< from the stretch to the text; empty where none is needed
    };

    /// Lines that texts are kept away from, also short ones, such as the marks at the ends of stretches.
    void avoid(const std::vector<std::pair<Vec2, Vec2>>& lines);
    /// The places of all texts, which are taken from now on: upon their stretches; where these are too short,
    /// beside the line's end, below the line, or further away with a leader.
    std::vector<Place> place(const std::vector<Wanted>& texts);
    /// Takes the place of a text along a line of the direction `along`, of length 1.
    void take(Vec2 middle, Vec2 along, Vec2 size);

private:
    struct Text {
        Vec2 middle;
        Vec2 along;
        Vec2 half;
    };
    static bool meet(const Text& a, const Text& b);
    static Text asText(Vec2 from, Vec2 to);
    static std::vector<double> insides(const std::vector<Wanted>& texts);
    std::optional<Place> upon(const Span& span, Vec2 size);
    Place besides(const Span& span, Vec2 size);
    Place oneOf(const std::vector<Vec2>& middles, Vec2 along, Vec2 size);
    bool isFree(const Text& text) const;
    bool isCrossed(const Text& text) const;
    /// Whether a leader passes no text and no other leader.
    bool isLed(const std::vector<Vec2>& leader) const;

    std::vector<Text> m_taken;
    std::vector<Text> m_lines; ///< as texts without height
    std::vector<std::pair<Vec2, Vec2>> m_leaders;
};
