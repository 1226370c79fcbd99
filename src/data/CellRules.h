#pragma once

#include "data/StyleSource.h"

/// Why a cell must not hold a value.
enum class eCellFault : std::uint8_t {
    kNone,
    kWrongType,  ///< of another type, not finite, too large for its type, or a text that is no UTF-8
    kOutOfRange, ///< outside the column's range
    kNoTarget,   ///< refers to a row that does not exist
    kNoWhole,    ///< would be a part of nothing
    kNoName,     ///< a run name that is empty or blank
    kNameTaken,  ///< a run name that another row of the table has
};

/// What a column of a row may hold, for everything that writes or checks cells. `key` is the row's, or 0 for
/// one that is not there yet. Rows that belong to others need no name, and no name of their own.
eCellFault faultOf(StyleSource& source, const TableSchema& table, const Column& column, std::int32_t key,
                   const CellValue& value);
