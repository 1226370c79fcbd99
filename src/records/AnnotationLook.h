#pragma once

#include "base/LabelFormat.h"
#include "records/ObjectRecords.h"

/// How contents of annotations look where they say nothing else themselves, save for the font, which is that
/// of the drawing; null stands for a strategy without a type.
inline LabelStyle labelStyleOf(const StructDetAnnotationType* type) {
    constexpr double kSize = 3.5;
    constexpr int kColor = 7;
    return {{}, type && type->textSize > 0 ? type->textSize : kSize, kColor};
}
