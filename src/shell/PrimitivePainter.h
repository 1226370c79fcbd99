#pragma once

#include "picture/PaperColor.h"
#include "picture/Primitive.h"

#include <QColor>

#include <span>

class QPainter;

/// Paints what a drawing is made of. Who calls sets up the painter so that one of its units is a millimetre
/// on the sheet, x to the right and y down: y is -v.
namespace PrimitivePainter {

/// On what is painted, and how thin lines may become.
struct Ground {
    PaperColor::eGround kind = PaperColor::eGround::kPaper;
    double thinnest = 0; ///< of lines, in pixels of the device; 0: as wide as their pens say
};

QColor paper(const Ground& ground);
/// Paints them as their pens and styles say, with texts stretched to the width that the drawing reserved.
void paint(QPainter& painter, std::span<const Primitive* const> primitives, const Ground& ground);
/// Paints them once more in the colour of what is pointed out, each with an outline around it, or one around
/// all where they are many, so that who sees no colours sees it, too.
void highlight(QPainter& painter, std::span<const Primitive* const> primitives, const Ground& ground);

} // namespace PrimitivePainter
