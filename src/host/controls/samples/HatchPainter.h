#pragma once

#include "base/KorString.h"

#include <QPainter>

/// The look of a hatched face.
struct Hatch {
    KorString pattern;    ///< name, without regard to case
    double angle = 45.0;  ///< degrees, of the first lines of the pattern
    double spacing = 3.0; ///< mm on paper, between them
    int color = 7;        ///< number of a drawing colour, see DrawingColors
};

/// Draws hatches, in the colour of the painter's pen.
namespace HatchPainter {

/// Whether the pattern can be drawn.
bool isKnown(const KorString& pattern);
/// Fills the area; does nothing for a pattern that is not known. Lines nearer to each other than can be told
/// apart are drawn farther apart.
void paint(QPainter& painter, const QRectF& area, const Hatch& hatch);

} // namespace HatchPainter
