#pragma once

#include "data/store/StyleStore.h"

#include <span>

/// Which columns of a table a database has, and which are missing in it.
struct TableLayout {
    std::vector<const Column*> present;
    std::vector<const Column*> missing;
    bool hasTable = false; ///< there is an ordinary table of that name with a key column
};

/// Why a change cannot be written into a database of this name and layout: what it concerns is missing. A row
/// may be appended where a column is missing if nothing is lost by it: reading gives the default again.
Result<> refuseMissing(const TableChange& change, const TableLayout& layout, const std::string& database);

/// The conflict of a row, some cells of which were to be changed, that is gone.
StoreConflict goneRow(const TableSchema& table, std::span<const CellChange* const> cells);

/// The changed cells by key and column.
std::vector<const CellChange*> sortedCells(const TableChange& change);
