#pragma once

#include "records/RowRef.h"
#include "records/TableSchema.h"

#include <optional>

/// The cell of the current source that a control shows.
struct FieldPlace {
    RowRef row;
    int column = 0;                      ///< number
    std::optional<CellValue> typed = {}; ///< what is being typed and is not written yet

    bool operator==(const FieldPlace&) const = default;
};
