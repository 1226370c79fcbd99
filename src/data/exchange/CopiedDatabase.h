#pragma once

#include "data/store/StyleStore.h"

#include <functional>

/// Copying a whole database into another one: the same keys, the same order, the same values.
namespace CopiedDatabase {

/// Is told what was copied of each table that has rows. Returns whether to go on.
using Progress = std::function<bool(const TableSchema& table, int rows)>;

/// Writes all rows of `from`, read in one state, into `to`, in which a transaction is open and whose tables
/// are empty. Fails where something of `from` could not be read as it is, and where it was
/// not to go on.
Result<> copy(StyleStore& from, StyleStore& to, const Progress& progress);

/// Why `to` cannot take a whole database: it has rows already. Success where it is empty.
Result<> refuseRows(StyleStore& to);

} // namespace CopiedDatabase
