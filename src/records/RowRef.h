#pragma once

#include "records/TableTypes.h"

#include <compare>
#include <cstdint>

/// One row of one source, which the context tells.
struct RowRef {
    eTableType table = kNoTable;
    std::int32_t key = 0;

    auto operator<=>(const RowRef&) const = default;
};
