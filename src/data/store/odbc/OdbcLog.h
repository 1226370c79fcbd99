#pragma once

#include "data/store/StoredSince.h"
#include "data/store/odbc/OdbcDatabase.h"

#include <set>

/// What the commits of a database on a server wrote, by the rows that they left in the tables of changes.
class OdbcLog {
public:
    explicit OdbcLog(OdbcDatabase& database) : m_database(database) {}

    /// Commits up to `last`, of which those up to `known` and `own` ones need not be read.
    struct Range {
        std::int64_t known = 0;
        std::int64_t last = 0;
        std::set<std::int64_t> own;
    };
    /// Reads the rows that the others wrote, as they are now, in the transaction that is open. `since` is not
    /// known afterwards where one of the commits left no row there, or too many.
    Result<> read(const Range& range, StoredSince& since);
    /// A server's "2026-11-26 10:42:07.5+02", in the time of the server's choice, as date and time of day
    /// here; as it is where it is none.
    static std::string localTime(const std::string& stored);

private:
    using Keys = std::map<const TableSchema*, std::set<std::int32_t>>;

    Result<> readLog(const Range& range, StoredSince& since, Keys& keys);
    Result<> readTable(const TableSchema& table, const std::set<std::int32_t>& keys, StoredSince& since);

    OdbcDatabase& m_database;
};
