#pragma once

#include "records/KorOdbcKey.h"
#include "records/TableSchema.h"
#include "records/TableTypes.h"

#include <vector>

/// What a page shows of one row of the current source.
struct ShownColumns {
    eTableType table = kNoTable;
    KorOdbcKey key;
    std::vector<int> columns;           ///< numbers
    std::vector<eTableType> parts = {}; ///< tables whose rows are listed as parts of the row

    /// Whether anything of it is other than it is stored, or the whole row is not stored yet.
    bool isPending() const;
};

/// The column by which rows of the table `part` are parts of rows of this other one; null when they are none.
const Column* wholeColumn(const TableSchema& part, eTableType whole);
/// The tables whose rows are parts of rows of this one.
std::vector<eTableType> partTablesOf(eTableType table);
