#pragma once

#include "drawing/Pens.h"

/// Primitives of common shapes.
namespace Figures {

Primitive line(std::vector<Vec2> points, const Pen& pen, Primitive::ePurpose purpose,
               const ProvenancePtr& provenance, int object = -1);
Primitive circle(Vec2 centre, double radius, const Pen& pen, Primitive::ePurpose purpose,
                 const ProvenancePtr& provenance, int object = -1);
/// A text in the font of the drawing, with its middle at a point, along a line that is turned by `degrees`;
/// it is read from below, or from the right where the line is upright.
Primitive text(const Pens& pens, Vec2 middle, double size, const std::string& words,
               Primitive::ePurpose purpose, const ProvenancePtr& provenance, int object = -1,
               double degrees = 0);

} // namespace Figures
