#pragma once

#include <QColor>

/// The colours of drawings by their numbers: 0 by block, 1 to 255, 256 by layer.
namespace DrawingColors {

inline constexpr int kByBlock = 0;
inline constexpr int kForeground = 7;
inline constexpr int kByLayer = 256;

/// Black or white, whichever stands out more from `background`.
QColor foreground(const QColor& background);

/// The colour as a plotter would draw it. Numbers without a colour of their own (0, 7, 256 and those out of
/// range) give the foreground of `background`.
QColor swatch(int number, const QColor& background);

/// The colour for text in a field: `swatch`, moved towards the foreground as far as it takes to be read on
/// `background`.
QColor readable(int number, const QColor& background);

} // namespace DrawingColors
