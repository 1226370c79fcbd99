#pragma once

#include "records/RowRef.h"

#include <string>
#include <vector>

class StyleSource;

/// What is to be drawn so that a record is seen at work.
struct DrawingSubject {
    std::int32_t style = 0; ///< key of a detail style that the record acts in; 0: none does
    std::int32_t view = 0;  ///< of its views the first that the record acts in; 0: it acts on the whole sheet
    std::vector<std::int32_t> views = {}; ///< all of those
    std::string why;                      ///< where there is no style: one sentence for the user

    /// Of a record of any table: a style itself, what a style uses over any number of steps, or a part of
    /// that. Among several the preferred style is taken, or else the one with the lowest key.
    static DrawingSubject of(StyleSource& source, const RowRef& row, std::int32_t preferredStyle = 0);
};
