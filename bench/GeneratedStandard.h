#pragma once

#include "data/store/SqliteStore.h"

#include <string>

/// A Standard database of the size that a large maker ships: 10,000 detail styles in 60 categories, 30,000
/// view requests, and 150,000 rows in all; or a multiple of it.
namespace GeneratedStandard {

/// How many times as many records the database has; 1 at first. To be set before it is written.
void setScale(int scale);
/// Takes `--scale N` out of the arguments of a benchmark and sets it.
void takeScale(int& argc, char** argv);
int styles();
int viewRequests();

/// Writes the database; replaces what is there. The styles are spread evenly over so many categories.
Result<> write(const std::string& path, int categoriesInUse = 60);

/// Writes a database of `count` detail styles of one name, each with a view of its own, also of one name, in
/// one category. No two of them hold the same.
Result<> writeNamesakes(const std::string& path, int count);
/// Writes a database of `count` categories with one detail style each.
Result<> writeCategories(const std::string& path, int count);

/// The database in the temporary folder, written on the first call. Throws when it cannot be.
const std::string& file();

/// Reads one table the bare way: one prepared statement of the SQLite C interface, every column into its
/// member, no checks. The yardstick for reading.
void scanTable(struct sqlite3* database, const TableSchema& table, RowArray& rows);

} // namespace GeneratedStandard
