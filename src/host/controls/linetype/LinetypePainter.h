#pragma once

#include "base/LinetypeFile.h"

#include <QPainter>

/// Draws line types, in the colour of the painter's pen and with its font.
namespace LinetypePainter {

/// A horizontal line through the middle of `area`, in the pattern: as large as on paper where that can be
/// told, larger where the pattern would be too small and smaller where it would not fit once. A pattern
/// without dashes, dots, texts and shapes draws nothing.
///
/// `weight` is the width of the line in pixels.
void paintLine(QPainter& painter, const QRectF& area, const LinetypePattern& pattern, double weight = 1.2);

/// A name with its line beside it.
void paintEntry(QPainter& painter, const QRect& area, const LinetypeDefinition& linetype);

/// How many pixels one unit of the pattern gets on a line `width` pixels long.
double pixelsPerUnit(const LinetypePattern& pattern, double width);

} // namespace LinetypePainter
