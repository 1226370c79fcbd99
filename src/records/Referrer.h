#pragma once

#include "records/TableSchema.h"

/// A cell that refers to a row.
struct Referrer {
    const TableSchema* table = nullptr;
    const Column* column = nullptr;
    std::int32_t key = 0; ///< of the row that holds the cell
};
