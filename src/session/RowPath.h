#pragma once

#include "records/KorOdbcKey.h"
#include "records/RowRef.h"

#include <vector>

/// A way from one row of the current source to another: columns that refer to the next row, by number, or
/// `kIdentifier` for the row that tells the host of this one.
using RowPath = std::vector<int>;

namespace RowPaths {

inline constexpr int kIdentifier = 0;

/// The table of the rows at the end of the way; `kNoTable` where a step leads nowhere.
eTableType tableAt(eTableType start, const RowPath& path);
/// The row at the end of the way, with key 0 where there is none.
RowRef rowAt(RowRef start, const RowPath& path);

} // namespace RowPaths
