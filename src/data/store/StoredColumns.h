#pragma once

#include "data/store/SqliteHandle.h"
#include "records/TableSchema.h"

#include <set>

/// Which of the declared tables and columns a database has. Only ordinary tables with a key count: views and
/// virtual tables would compute what whoever made the file wants.
class StoredColumns {
public:
    /// Reads them from an open database; returns an SQLite result code.
    int read(const SqliteConnection& connection);

    bool hasTable(const TableSchema& table) const;
    bool has(const TableSchema& table, const Column& column) const;

private:
    std::set<std::string> m_names;
};
