#pragma once

#include "picture/Primitive.h"

/// What made a line of a drawing, in words. The source must be the current one.
namespace KorDSMProvenanceWords {

/// What a record is called beside others: kind and name, as Appearance "HB holes"; of a part its place in its
/// whole, as Entry 3 of "HB workshop".
KorString nameOf(RowRef row);
/// The same with the columns that had a say: Appearance "HB holes": Colour, Line type.
KorString sentenceOf(const ProvenanceStep& step);

} // namespace KorDSMProvenanceWords
