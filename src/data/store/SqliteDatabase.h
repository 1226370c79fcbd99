#pragma once

#include "data/store/StoreFault.h"
#include "data/store/StoredColumns.h"

#include <map>
#include <optional>

/// The cells that were read as something else than they hold, with what they hold: a write that mends one
/// must find it unchanged.
class UnreadableCells {
public:
    void remember(std::int32_t key, const Column& column, SqliteValue stored) {
        m_cells[{&column, key}] = std::move(stored);
    }
    /// What the cell holds, or null for a cell that is as it should be.
    sqlite3_value* find(std::int32_t key, const Column& column) const;
    void forget(std::int32_t key, const Column& column) { m_cells.erase({&column, key}); }
    void forget(const TableSchema& table);

private:
    std::map<std::pair<const Column*, std::int32_t>, SqliteValue> m_cells;
};

/// An open database file with what is known about it: what reading and writing share.
class SqliteDatabase {
public:
    explicit SqliteDatabase(std::string fileName) : file(std::move(fileName)) {}
    /// One that shares the file's name and what was not readable, but has no connection yet.
    explicit SqliteDatabase(const SqliteDatabase* of) : file(of->file), unreadable(of->unreadable) {}

    std::string file; ///< as sentences name it
    SqliteConnection connection;
    std::shared_ptr<UnreadableCells> unreadable = std::make_shared<UnreadableCells>();
    Result<> whyClosed; ///< the failure that left no connection

    /// The failure that a result code means; without a connection, why there is none.
    Result<> failure(int code) const;
    /// The layout of `table`, valid until `forgetLayouts`.
    Result<> layoutOf(const TableSchema& table, const TableLayout*& layout);
    /// For when another program may have changed the tables.
    void forgetLayouts() {
        m_layouts.clear();
        m_columns.reset();
    }

private:
    std::optional<StoredColumns> m_columns;
    std::map<const TableSchema*, TableLayout> m_layouts;
};
