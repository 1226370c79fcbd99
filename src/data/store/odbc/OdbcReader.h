#pragma once

#include "data/store/CellFit.h"
#include "data/store/RecentTexts.h"
#include "data/store/odbc/OdbcDatabase.h"

#include <span>

/// Rows of a table, as they come from a server. Where a text is longer than the room for it they are read
/// again from there, with more room.
class OdbcTableScan {
public:
    /// `columns` are those that are read, beside the key.
    OdbcTableScan(OdbcDatabase& database, const TableSchema& table,
                  const std::vector<const Column*>& columns);

    /// Takes a row without a usable key, and whether its key was there already.
    using LeaveOut = std::function<void(const std::string& key, bool isDuplicate)>;
    /// Takes the record of the row `key`, which it is to fill by `fill`.
    using Take = std::function<void(std::int32_t key)>;

    /// Reads the rows for which `condition` holds, all where it is empty, in the order of their keys, with
    /// `ending` behind the SELECT. `take` calls `fill` for each.
    Result<> run(const std::string& condition, const std::string& ending, const Take& take,
                 const LeaveOut& leaveOut = {});
    /// Fills `record`, which holds the defaults, from the present row. Cells that do not fit are added to
    /// `odd`, by their places among the columns.
    void fill(StructRecord& record, std::vector<OddCell>& odd);
    /// What a cell of the present row holds; none for NULL.
    std::optional<std::string> stored(std::size_t place) const;
    /// How many rows there are, 0 where that is not known.
    int expectedRows() const;

private:
    enum class eEnd { kAll, kCutShort };

    std::string sql(const std::string& condition, const std::string& ending) const;
    OdbcError readBlocks(const Take& take, const LeaveOut& leaveOut, eEnd& end);
    bool widen();
    std::int32_t readKey(const LeaveOut& leaveOut);

    OdbcDatabase& m_database;
    const TableSchema& m_table;
    const std::vector<const Column*>& m_columns;
    std::vector<std::size_t> m_rooms;
    RecentTexts m_recent;
    std::size_t m_row = 0;   // in the block
    std::int32_t m_last = 0; // key that was taken last
    int m_leftOut = 0;
    int m_toLeaveOut = 0; // of those that were told already
};

/// Reads a table as `StyleStore::readTable` says.
Result<> readOdbcTable(OdbcDatabase& database, const TableSchema& table, RowArray& rows,
                       std::vector<ReadProblem>& problems);

/// The same of the rows that have these keys, as far as they are there.
Result<> readOdbcRows(OdbcDatabase& database, const TableSchema& table, const std::vector<std::int32_t>& keys,
                      RowArray& rows, std::vector<ReadProblem>& problems);
/// SQL that holds for the rows that have these keys.
std::string isKeyIn(const OdbcDialect& dialect, std::span<const std::int32_t> keys);
/// So many of them are asked for at once.
inline constexpr std::size_t kKeysOfStatement = 1000;

/// What a cell holds, as a user reads it.
std::string displayCell(const std::optional<std::string>& stored);
