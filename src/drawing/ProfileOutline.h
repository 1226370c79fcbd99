#pragma once

#include "drawing/Solid.h"

#include <string>

/// The cross-section of a profile: x across it, y in the direction of its height, the middle of its box at
/// the origin. Families and the measures that each needs, in millimetres:
///
///     I, H    height, width, web, flange [, root radius]
///     U       height, width, web, flange [, root radius]
///     L       height, width, thickness
///     RHS     height, width, thickness         (SHS the same)
///     CHS     diameter, thickness
///     RD      diameter
///     FL      height, thickness
///     C, Z    height, width, lip, thickness
///
/// Nothing where the family is not known, or the measures are too few or impossible.
Outline profileOutline(const std::string& family, const std::vector<double>& measures);
