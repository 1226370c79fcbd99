#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// One piece of the pattern of a line type. Lengths are in drawing units on paper (millimetres or inches, as
/// the file has them).
struct LinetypeElement {
    enum eKind : std::uint8_t { kDash, kGap, kDot, kShape, kText };
    enum eRotation : std::uint8_t { kAlongLine, kAbsolute, kUpright };

    eKind kind = kDash;
    double length = 0.0; ///< of a dash or gap, above 0

    // Of shapes and texts, which stand at the point reached and take no length:
    KorString text;        ///< the text, or the name of the shape
    KorString font;        ///< the text style, or the file of the shape
    double scale = 1.0;    ///< height of the text
    double rotation = 0.0; ///< degrees, counter-clockwise
    eRotation rotationKind = kAlongLine;
    double x = 0.0; ///< offset along the line
    double y = 0.0; ///< offset to its left
};

/// The pattern of a line type, repeated along the line.
using LinetypePattern = std::vector<LinetypeElement>;

/// The text form of patterns: "A," and elements with commas between. A number above 0 is a dash, below 0 a
/// gap, 0 a dot. A shape stands as [NAME,file,attributes], a text as ["TEXT",style,attributes], where the
/// attributes are S= (scale), R=, A= or U= (rotation along the line, absolute, or upright; degrees, or with
/// the suffix r or g), X= and Y=. A comment can follow after a semicolon.
namespace LinetypePatterns {

/// Reads a pattern; nothing when it is damaged or has no element.
std::optional<LinetypePattern> parse(std::string_view text);

/// How long the pattern is before it repeats.
double length(const LinetypePattern& pattern);

} // namespace LinetypePatterns
