#pragma once

#include "records/Column.h"

#include <cstddef>
#include <cstdint>

/// How a stored cell fits its column.
enum class eCellFit : std::uint8_t {
    kFits,
    kOutside, ///< of the right type, but outside the range of the column: used as it is
    kMisfit,  ///< of another type, or beyond 32 bits: the default is used
};

/// A cell that does not fit, by its place among the selected columns.
struct OddCell {
    std::size_t place = 0;
    eCellFit fit = eCellFit::kFits;
};

/// Of a cell of the right type.
inline eCellFit fitOf(const Column& column, double value) {
    return column.isInRange(value) ? eCellFit::kFits : eCellFit::kOutside;
}
