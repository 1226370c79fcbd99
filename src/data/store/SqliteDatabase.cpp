#include "data/store/SqliteDatabase.h"

#include <cstring>

namespace {

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

Result<> SqliteDatabase::failure(int code) const {
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

Result<> SqliteDatabase::layoutOf(const TableSchema& table, const TableLayout*& layout) {
    if (!m_columns) {
        StoredColumns stored;
        if (const int code = stored.read(connection); code != SQLITE_OK)
            return failure(code);
        m_columns = std::move(stored);
    }
    auto it = m_layouts.find(&table);
    if (it == m_layouts.end())
        it = m_layouts.emplace(&table, m_columns->layoutOf(table)).first;
    layout = &it->second;
    return {};
}
