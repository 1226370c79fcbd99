#pragma once

#include "picture/Primitive.h"

/// Two drawings of the same style and part, compared in words.
namespace KorDSMDrawingDifferences {

/// What came, went, moved and looks different, counted by kind: one text for each view, as
/// "HB front – dimensions: 3 came, 1 moved; labels: 1 went", and one for the sheet. Nothing where they are
/// equal. Of a view that stands elsewhere as a whole that is said, and what is in it is compared apart from
/// it.
std::vector<KorString> wordsOf(const Drawing& before, const Drawing& after);

} // namespace KorDSMDrawingDifferences
