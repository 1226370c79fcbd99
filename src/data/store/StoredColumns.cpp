#include "data/store/StoredColumns.h"

#include <algorithm>

namespace {

std::string foldedName(const std::string& table, const std::string& column) {
    std::string folded = table + '\n' + column; // names of SQL are the same in capitals
    std::ranges::transform(folded, folded.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    return folded;
}

} // namespace

int StoredColumns::read(const SqliteConnection& connection) {
    // Views and virtual tables have no root page; generated columns are not listed.
    const SqliteStatement query(connection.get(), "SELECT t.name, c.name FROM sqlite_master t, "
                                                  "pragma_table_info(t.name) c WHERE t.type = 'table' AND "
                                                  "t.rootpage > 0");
    m_names.clear();
    int code = query.step();
    for (; code == SQLITE_ROW; code = query.step())
        add(reinterpret_cast<const char*>(sqlite3_column_text(query.get(), 0)),
            reinterpret_cast<const char*>(sqlite3_column_text(query.get(), 1)));
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

void StoredColumns::add(const std::string& table, const std::string& column) {
    m_names.insert(foldedName(table, column));
}

bool StoredColumns::hasTable(const TableSchema& table) const {
    return m_names.contains(foldedName(table.name, "key"));
}

bool StoredColumns::has(const TableSchema& table, const Column& column) const {
    return m_names.contains(foldedName(table.name, column.name));
}

TableLayout StoredColumns::layoutOf(const TableSchema& table) const {
    TableLayout layout;
    layout.hasTable = hasTable(table);
    for (const Column& column : table.columns)
        (has(table, column) ? layout.present : layout.missing).push_back(&column);
    return layout;
}
