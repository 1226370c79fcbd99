#pragma once

#include "base/LinetypePattern.h"
#include "controls/samples/HatchPainter.h"

#include <QColor>
#include <QIcon>
#include <QSize>

/// Icons of what values look like on a drawing, for lists and fields. They are drawn when they are shown, as
/// sharp as the screen allows and in the palette of that moment, on a piece of paper of their own, so that
/// they are seen on selected rows as well. All are pure: equal arguments look equal.
namespace KorSamples {

/// How a line is drawn. A weight of 0 is a hairline.
struct Line {
    LinetypePattern pattern; ///< empty: an unbroken line
    int color = 7;           ///< number of a drawing colour, see DrawingColors
    double weight = 0.0;     ///< mm on paper
};

/// The ends that leaders can have.
enum eArrow : int { kNoArrow = 0, kFilledArrow = 1, kOpenArrow = 2, kDot = 3 };

/// The line from a label to its object.
struct Leader {
    int arrow = kFilledArrow; ///< of eArrow
    double arrowSize = 2.5;   ///< mm on paper
    double landing = 4.0;     ///< mm on paper
};

/// How large the samples are in pixels at 100 %.
inline constexpr QSize kSwatchSize(24, 16);
inline constexpr QSize kSampleSize(56, 16);
inline constexpr QSize kShortSize(16, 16); ///< of samples inside of fields

/// A colour by its number. One that comes from the layer or the block shows the foreground in a half only.
QIcon color(int number);
/// A piece of a line.
QIcon line(const Line& line, QSize size = kSampleSize);
/// Visible edges above hidden ones, beside a cut face. What is not drawn is left out.
struct Appearance {
    bool hasVisible = true;
    Line visible;
    bool hasHidden = true;
    Line hidden;
    Hatch hatch; ///< without a pattern: no hatch
};
QIcon appearance(const Appearance& appearance);
/// A hatched face; an empty icon where nobody knows the pattern.
QIcon hatch(const Hatch& hatch, QSize size = kSampleSize);
/// A leader with its arrow; an empty icon for an arrow of no known kind.
QIcon leader(const Leader& leader);

} // namespace KorSamples
