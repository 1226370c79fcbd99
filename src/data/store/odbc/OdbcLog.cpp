#include "data/store/odbc/OdbcLog.h"

#include "data/store/odbc/OdbcReader.h"
#include "data/store/odbc/OdbcTables.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace {

constexpr std::int64_t kMostRows = 20000; // beyond that reading everything is quicker
constexpr std::int64_t kFewCommits = 10;  // that leave fewer rows

const TableSchema* tableNamed(const std::string& name) {
    const auto found = std::ranges::find(allTables(), name, &TableSchema::name);
    return found == allTables().end() ? nullptr : &*found;
}

} // namespace

std::string OdbcLog::localTime(const std::string& stored) {
    std::tm time{};
    int seconds = 0;
    if (std::sscanf(stored.c_str(), "%d-%d-%d %d:%d:%d", &time.tm_year, &time.tm_mon, &time.tm_mday,
                    &time.tm_hour, &time.tm_min, &seconds) != 6)
        return stored;
    time.tm_year -= 1900;
    --time.tm_mon;
    const std::size_t zone = stored.find_first_of("+-", stored.find(':'));
    if (zone != std::string::npos) {
        int hours = 0;
        int minutes = 0;
        std::sscanf(stored.c_str() + zone + 1, "%d:%d", &hours, &minutes);
        const int sign = stored[zone] == '-' ? 1 : -1;
        time.tm_hour += sign * hours;
        time.tm_min += sign * minutes;
    }
    const std::time_t moment = timegm(&time);
    std::array<char, 32> text{};
    localtime_r(&moment, &time);
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &time);
    return text.data();
}

Result<> OdbcLog::read(const Range& range, StoredSince& since) {
    Keys keys;
    Result<> result = readLog(range, since, keys);
    if (result && since.isKnown)
        for (const auto& [table, some] : keys)
            if (result)
                result = readTable(*table, some, since);
    if (!result)
        since = {};
    return result;
}

// Numbers of commits have no gaps: where one has no row its rows were removed, or it was none of this
// program.
Result<> OdbcLog::readLog(const Range& range, StoredSince& since, Keys& keys) {
    const OdbcDialect& dialect = *m_database.dialect;
    const std::string those =
        "sequence > " + std::to_string(range.known) + " AND c.sequence <= " + std::to_string(range.last);
    if (range.last - range.known > kFewCommits) {
        std::optional<std::int64_t> count;
        Result<> result = m_database.queryInteger(
            "SELECT COUNT(*) FROM " + dialect.table(kChangeTable) + " c WHERE c." + those, count);
        if (!result || count.value_or(0) > kMostRows)
            return result;
    }
    OdbcRows rows;
    const OdbcError error = m_database.connection.query(
        "SELECT c.sequence, h.style_table, h.row_key, h.kind, c.stored_by, c.stored_at FROM " +
            dialect.table(kCommitTable) + " c JOIN " + dialect.table(kChangeTable) +
            " h ON h.sequence = c.sequence WHERE c." + those + " ORDER BY c.sequence",
        rows);
    if (error)
        return m_database.failure(error);
    std::int64_t commits = 0;
    std::int64_t previous = range.known;
    bool areTablesKnown = true;
    for (const auto& row : rows) {
        const std::int64_t sequence = numberIn(row[0]);
        commits += sequence != previous;
        previous = sequence;
        const TableSchema* table = tableNamed(row[1].value_or(""));
        areTablesKnown = areTablesKnown && table;
        if (!table || range.own.contains(sequence))
            continue;
        const auto key = static_cast<std::int32_t>(numberIn(row[2]));
        keys[table].insert(key);
        since.authors[{table->type, key}] = {row[4].value_or(""), localTime(row[5].value_or("")), sequence};
    }
    since.isKnown = areTablesKnown && commits == range.last - range.known;
    return {};
}

// A key of 0 stands for many rows.
Result<> OdbcLog::readTable(const TableSchema& table, const std::set<std::int32_t>& keys,
                            StoredSince& since) {
    StoredSince::Table& read = since.tables.emplace_back();
    read.table = &table;
    read.isWhole = keys.contains(0);
    read.rows = table.makeRows();
    if (read.isWhole)
        return readOdbcTable(m_database, table, *read.rows, read.problems);
    Result<> result = readOdbcRows(m_database, table, {keys.begin(), keys.end()}, *read.rows, read.problems);
    std::ranges::copy_if(keys, std::back_inserter(read.gone),
                         [&](std::int32_t key) { return !read.rows->find(key); });
    return result;
}
