#pragma once

#include "base/KorString.h"
#include "picture/Primitive.h"

#include <string>

/// A drawing as it is shown in a file: with a margin and the line that says it is schematic.
struct PicturePage {
    std::string title; ///< of the file
    Primitives primitives;
    std::vector<std::size_t> highlighted; ///< indexes of primitives that are pointed out
    Box2 box;                             ///< of the page
};

/// What the drawing is and is not, in one line, which begins with the sentence on what is tried out in it.
KorString schematicOf(const Drawing& drawing, const KorString& trial = {});
/// The page of a drawing, with that line below it.
PicturePage pageOf(const Drawing& drawing, const KorString& trial = {});
