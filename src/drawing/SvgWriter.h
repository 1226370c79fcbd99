#pragma once

#include "drawing/Primitive.h"

#include <string>

/// A drawing as an SVG picture, in millimetres, with a line below it that says it is schematic. The same
/// drawing gives the same bytes, whatever machine and locale.
std::string svgOf(const Drawing& drawing, const std::string& schematic);

/// The colour of a drawing colour on white paper, as "#rrggbb". 7, 0 and 256 are black there.
std::string colorOnPaper(int color);
