#pragma once

#include "data/store/SqliteHandle.h"
#include "data/store/TableLayout.h"

#include <set>

/// Which of the declared tables and columns a database has. Only ordinary tables with a key count: views and
/// virtual tables would compute what whoever made the file wants.
class StoredColumns {
public:
    /// Reads them from an open database; returns an SQLite result code.
    int read(const SqliteConnection& connection);

    /// Adds one that a database has, whatever engine it is of.
    void add(const std::string& table, const std::string& column);

    bool hasTable(const TableSchema& table) const;
    bool has(const TableSchema& table, const Column& column) const;
    TableLayout layoutOf(const TableSchema& table) const;

private:
    std::set<std::string> m_names;
};
