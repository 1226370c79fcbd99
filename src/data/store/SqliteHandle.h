#pragma once

#include "records/Column.h"

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// One prepared statement. Parameters are numbered from 1, result columns from 0, as SQLite has it.
/// Operations return SQLite's extended result codes.
class SqliteStatement {
public:
    SqliteStatement() = default;
    /// Prepares `sql`; `code()` says whether that worked.
    SqliteStatement(sqlite3* db, const std::string& sql);

    int code() const { return m_code; }
    sqlite3_stmt* get() const { return m_statement.get(); }

    /// Binds a value that must stay alive and unchanged until the next `reset`.
    void bind(int parameter, const CellValue& value) const;
    void bind(int parameter, std::int64_t value) const { sqlite3_bind_int64(get(), parameter, value); }
    /// SQLITE_ROW, SQLITE_DONE or an error.
    int step() const { return m_statement ? sqlite3_step(get()) : m_code; }
    /// Makes the statement ready for another run and gives up its lock.
    void reset() const { sqlite3_reset(get()); }

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    int m_code = SQLITE_ERROR;
};

/// A value that outlives the row it came from.
struct SqliteValueFree {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using SqliteValue = std::unique_ptr<sqlite3_value, SqliteValueFree>;
/// The cell of the row on which `statement` stands, of whatever type it is.
SqliteValue storedCell(sqlite3_stmt* statement, int column);

/// One connection to a database file. The operations return SQLite's extended result codes.
class SqliteConnection {
public:
    SqliteConnection() = default;

    /// Opens the existing file `path` (absolute, so that it is never taken for a URI).
    int open(const std::string& path, bool readOnly);
    /// Makes an empty database in memory.
    int openInMemory();
    /// The database may come from anybody: nothing that is stored in it may act, and its structure is not
    /// trusted.
    int distrust() const;
    sqlite3* get() const { return m_db.get(); }

    /// Runs one statement that yields nothing of interest.
    int execute(const std::string& sql) const;
    /// The first column of the first row.
    int queryInteger(const std::string& sql, std::int64_t& value) const;
    /// The first column of every row, as text.
    int queryTexts(const std::string& sql, std::vector<std::string>& texts) const;
    bool isInTransaction() const { return m_db && sqlite3_get_autocommit(get()) == 0; }

private:
    int openWith(const std::string& path, int flags);

    struct Closer {
        void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
    };
    std::unique_ptr<sqlite3, Closer> m_db;
};

/// `name` as an SQL identifier; some column names are words of SQL.
std::string quotedIdentifier(const std::string& name);
/// `text` as an SQL text literal.
std::string quotedText(const std::string& text);
