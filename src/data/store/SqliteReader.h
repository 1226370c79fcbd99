#pragma once

#include "data/store/CellFit.h"
#include "data/store/RecentTexts.h"
#include "data/store/SqliteDatabase.h"

/// Reads one row after the other of a `SELECT key, columns...` into records, with a check of every cell.
class SqliteRowReader {
public:
    /// `columns` are the selected ones, in their order behind the key.
    SqliteRowReader(const SqliteStatement& select, const std::vector<const Column*>& columns)
        : m_select(select.get()), m_columns(columns) {}

    /// Fills `record`, which holds the defaults, from the row on which the statement stands. Texts that many
    /// rows repeat, such as titles, share their buffers. Cells that do not fit are added to `odd`.
    void read(StructRecord& record, std::vector<OddCell>& odd);

private:
    eCellFit readInteger(int cell, const Column& column, std::int32_t& value) const;
    eCellFit readReal(int cell, const Column& column, double& value) const;
    eCellFit readText(int cell, KorString& value);

    sqlite3_stmt* m_select;
    const std::vector<const Column*>& m_columns;
    RecentTexts m_recent;
};

/// `SELECT key, columns... FROM table`, without a condition.
std::string selectSql(const TableSchema& table, const std::vector<const Column*>& columns);

/// Reads a table as `StyleStore::readTable` says.
Result<> readSqliteTable(SqliteDatabase& database, const TableSchema& table, RowArray& rows,
                         std::vector<ReadProblem>& problems);
