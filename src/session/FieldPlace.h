#pragma once

#include "records/RowRef.h"
#include "records/TableSchema.h"

#include <optional>
#include <vector>

/// What a control shows of the current source: a cell, or what a row does with objects of the sample part.
struct FieldPlace {
    RowRef row;
    int column = 0;                      ///< number; 0: no cell
    std::optional<CellValue> typed = {}; ///< what is being typed and is not written yet
    std::vector<int> objects = {};       ///< that the control counts, by their index in the part

    bool operator==(const FieldPlace&) const = default;
};
