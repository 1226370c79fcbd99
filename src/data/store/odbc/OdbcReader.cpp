#include "data/store/odbc/OdbcReader.h"

#include "base/Translation.h"
#include "data/store/ReadReport.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kRoomOfInteger = 24;
constexpr std::size_t kRoomOfReal = 40;
constexpr std::size_t kRoomOfText = 256;

template <typename T>
bool parse(std::string_view text, T& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

eCellFit readCell(std::string_view text, const Column& column, StructRecord& record, RecentTexts& recent) {
    if (column.isText())
        return recent.take(column, text, column.textIn(&record)) ? eCellFit::kFits : eCellFit::kMisfit;
    if (column.isReal()) {
        double value = 0;
        if (!parse(text, value) || !std::isfinite(value))
            return eCellFit::kMisfit;
        column.realIn(&record) = value;
        return fitOf(column, value);
    }
    std::int32_t value = 0;
    if (!parse(text, value))
        return eCellFit::kMisfit;
    column.integerIn(&record) = value;
    return fitOf(column, value);
}

} // namespace

OdbcTableScan::OdbcTableScan(OdbcDatabase& database, const TableSchema& table,
                             const std::vector<const Column*>& columns)
    : m_database(database), m_table(table), m_columns(columns), m_rooms({kRoomOfInteger}) {
    for (const Column* column : m_columns)
        m_rooms.push_back(column->isText() ? kRoomOfText : column->isReal() ? kRoomOfReal : kRoomOfInteger);
}

std::string OdbcTableScan::sql(const std::string& condition, const std::string& ending) const {
    const OdbcDialect& dialect = *m_database.dialect;
    const std::string key = dialect.name("key");
    std::string sql = "SELECT " + key;
    for (const Column* column : m_columns)
        sql += ", " + dialect.selected(*column);
    sql += " FROM " + dialect.table(m_table.name);
    std::string where = condition;
    if (m_last > 0)
        where = (where.empty() ? "" : "(" + where + ") AND ") + key + " > " + std::to_string(m_last);
    return sql + (where.empty() ? "" : " WHERE " + where) + " ORDER BY " + key + ending;
}

Result<> OdbcTableScan::run(const std::string& condition, const std::string& ending, const Take& take,
                            const LeaveOut& leaveOut) {
    OdbcError error;
    for (eEnd end = eEnd::kCutShort; !error && end == eEnd::kCutShort;) {
        error = m_database.connection.select(sql(condition, ending), m_rooms);
        if (!error)
            error = readBlocks(take, leaveOut, end);
        m_database.connection.endSelect();
    }
    return m_database.failure(error);
}

OdbcError OdbcTableScan::readBlocks(const Take& take, const LeaveOut& leaveOut, eEnd& end) {
    m_toLeaveOut = m_last > 0 ? 0 : m_leftOut;
    OdbcError error;
    while (!(error = m_database.connection.fetch()) && m_database.connection.block().size() > 0)
        for (m_row = 0; m_row < m_database.connection.block().size(); ++m_row) {
            const std::int32_t key = readKey(leaveOut);
            if (key == 0)
                continue;
            if (widen())
                return {};
            m_last = key;
            take(key);
        }
    end = eEnd::kAll;
    return error;
}

// Returns whether a cell of the present row had too little room.
bool OdbcTableScan::widen() {
    const OdbcBlock& block = m_database.connection.block();
    bool isCut = false;
    for (std::size_t i = 0; i < m_rooms.size(); ++i)
        if (const std::size_t room = block.missingRoom(m_row, i)) {
            m_rooms[i] = std::max(room, 2 * m_rooms[i]);
            isCut = true;
        }
    return isCut;
}

std::int32_t OdbcTableScan::readKey(const LeaveOut& leaveOut) {
    const std::optional<std::string_view> text = m_database.connection.block().cell(m_row, 0);
    std::int32_t key = 0;
    const bool isNumber = text && parse(*text, key);
    if (isNumber && key > m_last)
        return key;
    if (m_toLeaveOut > 0)
        --m_toLeaveOut;
    else if (++m_leftOut; leaveOut)
        leaveOut(displayCell(text ? std::optional(std::string(*text)) : std::nullopt),
                 isNumber && key == m_last && key > 0);
    return 0;
}

void OdbcTableScan::fill(StructRecord& record, std::vector<OddCell>& odd) {
    const OdbcBlock& block = m_database.connection.block();
    for (std::size_t place = 0; place < m_columns.size(); ++place) {
        const std::optional<std::string_view> text = block.cell(m_row, place + 1);
        const eCellFit fit = text ? readCell(*text, *m_columns[place], record, m_recent) : eCellFit::kMisfit;
        if (fit != eCellFit::kFits)
            odd.push_back({place, fit});
    }
}

std::optional<std::string> OdbcTableScan::stored(std::size_t place) const {
    const auto text = m_database.connection.block().cell(m_row, place + 1);
    return text ? std::optional(std::string(*text)) : std::nullopt;
}

int OdbcTableScan::expectedRows() const {
    constexpr std::int64_t kMost = 1 << 22;
    return static_cast<int>(std::clamp<std::int64_t>(m_database.connection.expectedRows(), 0, kMost));
}

std::string displayCell(const std::optional<std::string>& stored) {
    double number = 0;
    if (!stored)
        return translated("nothing").toStdString();
    if (!parse(std::string_view(*stored), number))
        return quotedStart(*stored);
    return stored->find_first_of(".e") == std::string::npos ? *stored : displayText(CellValue(number));
}

namespace {

// Reads the rows for which `condition` holds behind those that are in `rows`.
Result<> readInto(OdbcDatabase& database, const TableSchema& table, const TableLayout& layout,
                  const std::string& condition, RowArray& rows, ReadReport& report) {
    OdbcTableScan scan(database, table, layout.present);
    std::vector<OddCell> odd;
    return scan.run(
        condition, {},
        [&](std::int32_t key) {
            if (rows.size() == 0)
                rows.reserve(scan.expectedRows());
            StructRecord& record = rows.append();
            record.key = key;
            scan.fill(record, odd);
            for (const OddCell& cell : odd) {
                const Column& column = *layout.present[cell.place];
                std::optional<std::string> stored = scan.stored(cell.place);
                report.addCell(record, column, displayCell(stored), cell.fit == eCellFit::kOutside);
                if (cell.fit == eCellFit::kMisfit)
                    database.unreadable[{&column, key}] = std::move(stored);
            }
            odd.clear();
        },
        [&](const std::string& key, bool isDuplicate) { report.addRow(key, isDuplicate); });
}

} // namespace

Result<> readOdbcTable(OdbcDatabase& database, const TableSchema& table, RowArray& rows,
                       std::vector<ReadProblem>& problems) {
    const TableLayout* layout = nullptr;
    if (Result<> known = database.layoutOf(table, layout); !known)
        return known;
    ReadReport report(database.name(), table, problems);
    if (!layout->hasTable) {
        report.addMissingTable();
        return {};
    }
    for (const Column* column : layout->missing)
        report.addMissingColumn(*column);
    std::erase_if(database.unreadable, [&](const auto& cell) {
        return table.column(cell.first.first->number) == cell.first.first;
    });
    Result<> result = readInto(database, table, *layout, {}, rows, report);
    if (!result)
        rows.clear();
    return result;
}

std::string isKeyIn(const OdbcDialect& dialect, std::span<const std::int32_t> keys) {
    std::string list;
    for (const std::int32_t key : keys)
        list += (list.empty() ? "" : ", ") + std::to_string(key);
    return dialect.name("key") + " IN (" + list + ")";
}

Result<> readOdbcRows(OdbcDatabase& database, const TableSchema& table, const std::vector<std::int32_t>& keys,
                      RowArray& rows, std::vector<ReadProblem>& problems) {
    const TableLayout* layout = nullptr;
    Result<> result = database.layoutOf(table, layout);
    if (!result || !layout->hasTable)
        return result;
    ReadReport report(database.name(), table, problems);
    for (const std::int32_t key : keys)
        for (const Column* column : layout->present)
            database.unreadable.erase({column, key});
    for (std::size_t first = 0; result && first < keys.size(); first += kKeysOfStatement) {
        const std::span some =
            std::span(keys).subspan(first, std::min(kKeysOfStatement, keys.size() - first));
        result = readInto(database, table, *layout, isKeyIn(*database.dialect, some), rows, report);
    }
    rows.sort();
    return result;
}
