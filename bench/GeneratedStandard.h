#pragma once

#include "data/store/SqliteStore.h"

#include <string>

/// A Standard database of the size that a large maker ships: 10,000 detail styles in 60 categories, 30,000
/// view requests, and 150,000 rows in all.
namespace GeneratedStandard {

inline constexpr int kStyles = 10000;
inline constexpr int kViewRequests = 30000;

/// Writes the database; replaces what is there.
StoreResult write(const std::string& path);

/// Reads one table the bare way: one prepared statement of the SQLite C interface, every column into its
/// member, no checks. The yardstick for reading.
void scanTable(struct sqlite3* database, const TableSchema& table, RowArray& rows);

} // namespace GeneratedStandard
