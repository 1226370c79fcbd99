#include "data/store/SqliteDatabase.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace {

std::string foldedKey(const std::string& table, const std::string& column) {
    std::string folded = table + '\n' + column; // names of SQL are the same in capitals
    std::ranges::transform(folded, folded.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    return folded;
}

TableLayout layoutFrom(const TableSchema& table, const std::set<std::string>& columns) {
    TableLayout layout;
    layout.hasTable = columns.contains(foldedKey(table.name, "key"));
    for (const Column& column : table.columns)
        (columns.contains(foldedKey(table.name, column.name)) ? layout.present : layout.missing)
            .push_back(&column);
    return layout;
}

// The errno of the last read of the file that failed, or 0.
int lastReadError(sqlite3* db) {
    int error = 0;
    return db && sqlite3_file_control(db, "main", SQLITE_FCNTL_LAST_ERRNO, &error) == SQLITE_OK ? error : 0;
}

} // namespace

sqlite3_value* UnreadableCells::find(std::int32_t key, const Column& column) const {
    if (m_cells.empty())
        return nullptr;
    const auto it = m_cells.find({&column, key});
    return it == m_cells.end() ? nullptr : it->second.get();
}

void UnreadableCells::forget(const TableSchema& table) {
    const Column* first = table.columns.data();
    std::erase_if(m_cells, [&](const auto& cell) {
        return cell.first.first >= first && cell.first.first < first + table.columns.size();
    });
}

StoreResult SqliteDatabase::failure(int code) const {
    sqlite3* db = connection.get();
    if (!db && !whyClosed)
        return whyClosed;
    // What a device cannot read is called damage by the engine.
    if ((code & 0xFF) == SQLITE_CORRUPT)
        if (const int error = lastReadError(db))
            return faultResult(eStoreFault::kInputOutput, file, std::strerror(error));
    const char* detail = db && sqlite3_errcode(db) != SQLITE_OK ? sqlite3_errmsg(db) : sqlite3_errstr(code);
    return faultResult(faultOfCode(code, db ? sqlite3_system_errno(db) : 0), file, detail);
}

StoreResult SqliteDatabase::layoutOf(const TableSchema& table, const TableLayout*& layout) {
    if (m_layouts.empty()) {
        const StoreResult read = readLayouts();
        if (!read)
            return read;
    }
    layout = &m_layouts[&table];
    return {};
}

StoreResult SqliteDatabase::readLayouts() {
    // Only ordinary tables count: views and virtual tables have no root page, and what they would compute is
    // up to whoever made the file. Generated columns are not listed.
    const SqliteStatement query(connection.get(), "SELECT t.name, c.name FROM sqlite_master t, "
                                                  "pragma_table_info(t.name) c WHERE t.type = 'table' AND "
                                                  "t.rootpage > 0");
    std::set<std::string> columns;
    int code = query.step();
    for (; code == SQLITE_ROW; code = query.step())
        columns.insert(foldedKey(reinterpret_cast<const char*>(sqlite3_column_text(query.get(), 0)),
                                 reinterpret_cast<const char*>(sqlite3_column_text(query.get(), 1))));
    if (code != SQLITE_DONE)
        return failure(code);
    for (const TableSchema& table : allTables())
        m_layouts.emplace(&table, layoutFrom(table, columns));
    return {};
}
