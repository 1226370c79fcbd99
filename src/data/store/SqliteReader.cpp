#include "data/store/SqliteReader.h"

#include "data/store/ReadReport.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();

// How many rows to make room for: the highest key, but not more than fit into the file, so that one row
// with a huge key does not ask for gigabytes.
int expectedRows(const SqliteDatabase& database, const TableSchema& table, std::size_t columns) {
    std::int64_t highest = 0;
    std::int64_t pages = 0;
    std::int64_t pageSize = 0;
    database.connection.queryInteger("SELECT max(\"key\") FROM " + quotedIdentifier(table.name), highest);
    database.connection.queryInteger("PRAGMA page_count", pages);
    database.connection.queryInteger("PRAGMA page_size", pageSize);
    const std::int64_t smallestRow = static_cast<std::int64_t>(columns) + 4;
    return static_cast<int>(
        std::clamp(std::min(highest, pages * pageSize / smallestRow), std::int64_t{0}, kHighest));
}

// Reads the key of the present row, or 0 when the row cannot be used.
std::int32_t readKey(sqlite3_stmt* select, std::int32_t last, ReadReport& report) {
    const std::int64_t key = sqlite3_column_int64(select, 0);
    if (sqlite3_column_type(select, 0) == SQLITE_INTEGER && key > last && key <= kHighest)
        return static_cast<std::int32_t>(key);
    report.addRow(displayText(storedCell(select, 0).get()), key == last && last > 0);
    return 0;
}

class TableReading {
public:
    TableReading(SqliteDatabase& database, const TableSchema& table, const TableLayout& layout,
                 RowArray& rows, ReadReport& report)
        : m_database(database), m_layout(layout), m_rows(rows), m_report(report),
          m_select(database.connection.get(), selectSql(table, layout.present) + " ORDER BY \"key\""),
          m_reader(m_select, layout.present) {}

    /// SQLITE_DONE, or the error that ended the reading.
    int run() {
        std::int32_t last = 0;
        int code = m_select.step();
        for (; code == SQLITE_ROW; code = m_select.step()) {
            const std::int32_t key = readKey(m_select.get(), last, m_report);
            if (key == 0)
                continue;
            StructRecord& record = m_rows.append();
            last = record.key = key;
            m_reader.read(record, m_odd);
            if (!m_odd.empty())
                reportOddCells(record);
        }
        return code;
    }

private:
    void reportOddCells(const StructRecord& record) {
        for (const OddCell& odd : m_odd) {
            const Column& column = *m_layout.present[odd.place];
            SqliteValue stored = storedCell(m_select.get(), static_cast<int>(odd.place) + 1);
            m_report.addCell(record, column, displayText(stored.get()), odd.fit == eCellFit::kOutside);
            if (odd.fit == eCellFit::kMisfit)
                m_database.unreadable->remember(record.key, column, std::move(stored));
        }
        m_odd.clear();
    }

    SqliteDatabase& m_database;
    const TableLayout& m_layout;
    RowArray& m_rows;
    ReadReport& m_report;
    SqliteStatement m_select;
    SqliteRowReader m_reader;
    std::vector<OddCell> m_odd;
};

} // namespace

void SqliteRowReader::read(StructRecord& record, std::vector<OddCell>& odd) {
    for (std::size_t place = 0; place < m_columns.size(); ++place) {
        const Column& column = *m_columns[place];
        const int cell = static_cast<int>(place) + 1;
        const eCellFit fit = column.isInteger() ? readInteger(cell, column, column.integerIn(&record))
                             : column.isReal()  ? readReal(cell, column, column.realIn(&record))
                                                : readText(cell, column.textIn(&record));
        if (fit != eCellFit::kFits)
            odd.push_back({place, fit});
    }
}

eCellFit SqliteRowReader::readInteger(int cell, const Column& column, std::int32_t& value) const {
    if (sqlite3_column_type(m_select, cell) != SQLITE_INTEGER)
        return eCellFit::kMisfit;
    const std::int64_t stored = sqlite3_column_int64(m_select, cell);
    if (stored < kLowest || stored > kHighest)
        return eCellFit::kMisfit;
    value = static_cast<std::int32_t>(stored);
    return fitOf(column, value);
}

eCellFit SqliteRowReader::readReal(int cell, const Column& column, double& value) const {
    const int type = sqlite3_column_type(m_select, cell);
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER)
        return eCellFit::kMisfit;
    const double stored = sqlite3_column_double(m_select, cell);
    if (!std::isfinite(stored))
        return eCellFit::kMisfit;
    value = stored;
    return fitOf(column, value);
}

eCellFit SqliteRowReader::readText(int cell, KorString& value) {
    if (sqlite3_column_type(m_select, cell) != SQLITE_TEXT)
        return eCellFit::kMisfit;
    const auto* start = reinterpret_cast<const char*>(sqlite3_column_text(m_select, cell));
    const std::string_view stored(start, static_cast<std::size_t>(sqlite3_column_bytes(m_select, cell)));
    const Column& column = *m_columns[static_cast<std::size_t>(cell - 1)];
    return m_recent.take(column, stored, value) ? eCellFit::kFits : eCellFit::kMisfit;
}

std::string selectSql(const TableSchema& table, const std::vector<const Column*>& columns) {
    std::string sql = "SELECT \"key\"";
    for (const Column* column : columns)
        sql += ", " + quotedIdentifier(column->name);
    return sql + " FROM " + quotedIdentifier(table.name);
}

Result<> readSqliteTable(SqliteDatabase& database, const TableSchema& table, RowArray& rows,
                         std::vector<ReadProblem>& problems) {
    const TableLayout* layout = nullptr;
    if (Result<> known = database.layoutOf(table, layout); !known)
        return known;
    ReadReport report(database.file, table, problems);
    if (!layout->hasTable) {
        report.addMissingTable();
        return {};
    }
    for (const Column* column : layout->missing)
        report.addMissingColumn(*column);
    database.unreadable->forget(table);
    rows.reserve(expectedRows(database, table, layout->present.size()));
    const int code = TableReading(database, table, *layout, rows, report).run();
    if (code == SQLITE_DONE)
        return {};
    rows.clear();
    return database.failure(code);
}
