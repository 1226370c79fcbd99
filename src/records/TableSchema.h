#pragma once

#include "records/Column.h"
#include "records/RowArray.h"
#include "records/StructRecord.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The description of one table: the single place where it is said what its rows are called, how they are
/// stored and what their columns mean. Everything that treats tables alike reads it.
struct TableSchema {
    eTableType type = kNoTable;
    std::string name;                  ///< SQL name, words joined by '_'
    std::vector<Column> columns;       ///< ascending by number, from 1; the key is no column of its own
    eTableType commitsWith = kNoTable; ///< the table type in whose commit this table takes part
    bool canBeShared = false;          ///< rows may have several owners: those that the user is asked about
    int since = 1;                     ///< version of the schema in which databases got the table
    std::function<std::unique_ptr<RowArray>()> makeRows;

    /// Whether users make rows of this table to be used by other records: those that can be shared, and
    /// appearances. Vocabulary may lie unused, and groups may be empty.
    bool isMadeToBeUsed() const { return canBeShared || type == kTableAppearance; }

    /// Name on the command line, words joined by '-'.
    std::string kindName() const;
    /// What a row and a column are called inside a sentence, in the program's language.
    std::string rowName() const;
    std::string columnName(const Column& column) const;
    /// The column of this number or name, or null.
    const Column* column(int number) const;
    const Column* column(std::string_view columnName) const;
    /// The number of the first slot, or one above the last column where there are no slots.
    int firstSlot() const;
};

/// All tables, in the order of their types.
const std::vector<TableSchema>& allTables();

/// The table of this type, or null when there is none (48 "not set", or out of range).
const TableSchema* findTable(eTableType type);

/// The table of this SQL or command line name, or null.
const TableSchema* findTable(std::string_view name);

/// The table type whose rows are records of type R; given for each record in TableDeclarations.h.
template <typename R>
inline constexpr eTableType tableOf = kNoTable;
