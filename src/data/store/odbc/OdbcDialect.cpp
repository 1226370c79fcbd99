#include "data/store/odbc/OdbcDialect.h"

#include "data/store/odbc/OdbcTables.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

std::string digits(double value) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string replacedAll(std::string_view text, char what, std::string_view with) {
    std::string replaced;
    replaced.reserve(text.size() + 2);
    for (const char c : text)
        if (c == what)
            replaced += with;
        else
            replaced += c;
    return replaced;
}

// Marks are shared locks of two numbers: one tells schema and table, the other the row.
constexpr std::uint32_t kMarksOfSchema = 64;
static_assert(kEndOfTables <= kMarksOfSchema);

std::uint32_t firstMarkOf(const std::string& schema) {
    std::uint32_t hash = 2166136261U;
    for (const char c : schema)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash % (1U << 31) / kMarksOfSchema * kMarksOfSchema;
}

class PostgresDialect final : public OdbcDialect {
public:
    using OdbcDialect::OdbcDialect;

    // A number of digits alone would lose the sign of zero.
    std::string real(double value) const override {
        return "CAST('" + digits(value) + "' AS DOUBLE PRECISION)";
    }
    std::string forUpdate() const override { return " FOR UPDATE"; }
    bool takesSeveralStatements() const override { return true; }
    // A server that lost its client must not keep others waiting, nor show it for long.
    std::string greeting() const override {
        return "SET standard_conforming_strings = on; SET lock_timeout = '4s'; "
               "SET idle_in_transaction_session_timeout = '60s'; SET statement_timeout = '120s'; "
               "SET tcp_keepalives_idle = 10; SET tcp_keepalives_interval = 5; SET tcp_keepalives_count = "
               "3; ";
    }
    std::string returning(const std::string& column) const override { return " RETURNING " + column; }
    std::string oneState() const override {
        return "SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY; ";
    }
    std::string may(eServerRole role) const override {
        const std::string state = text(table(kStateTable));
        switch (role) {
        case eServerRole::kMaintainer:
            return "SELECT CASE WHEN pg_has_role(relowner, 'USAGE') THEN 1 ELSE 0 END FROM pg_class WHERE "
                   "oid = CAST(" +
                   state + " AS regclass)";
        case eServerRole::kEditor:
            return "SELECT CASE WHEN has_any_column_privilege(" + state + ", 'UPDATE') THEN 1 ELSE 0 END";
        default:
            return "SELECT CASE WHEN has_table_privilege(" + state + ", 'SELECT') THEN 1 ELSE 0 END";
        }
    }
    std::string mark(RowRef row, bool on) const override {
        return std::string(on ? "SELECT pg_advisory_lock_shared(" : "SELECT pg_advisory_unlock_shared(") +
               std::to_string(firstMarkOf(schema()) + static_cast<std::uint32_t>(row.table)) + ", " +
               std::to_string(row.key) + ")";
    }
    std::string withMarks(const std::string& query) const override {
        const std::string first = std::to_string(firstMarkOf(schema()));
        const std::string table = "CAST(l.classid AS bigint) - " + first;
        return "SELECT q.*, 0, '', 0, 0 FROM (" + query +
               ") q UNION ALL SELECT NULL, l.pid, CAST(a.usename AS text), " + table +
               ", CAST(l.objid AS bigint) FROM pg_locks l JOIN pg_stat_activity a ON a.pid = l.pid WHERE "
               "l.locktype = 'advisory' AND l.objsubid = 2 AND l.pid <> pg_backend_pid() AND l.database = "
               "(SELECT oid FROM pg_database WHERE datname = current_database()) AND " +
               table + " BETWEEN 0 AND " + std::to_string(kMarksOfSchema - 1);
    }
    std::string roles() const override {
        std::string names;
        for (const auto each : {eServerRole::kReader, eServerRole::kEditor, eServerRole::kMaintainer})
            names += (names.empty() ? "" : ", ") + text(role(each));
        return "SELECT rolname, CASE WHEN pg_has_role(r.oid, 'MEMBER') THEN 1 ELSE 0 END, COALESCE((SELECT "
               "string_agg(CAST(m.rolname AS text), ', ' ORDER BY m.rolname) FROM pg_auth_members a JOIN "
               "pg_roles m ON m.oid = a.member WHERE a.roleid = r.oid AND m.rolname <> current_user), '') "
               "FROM pg_roles r WHERE rolname IN (" +
               names + ") ORDER BY rolname";
    }
    std::size_t longestSchema() const override { return 63 - std::string_view("_maintainer").size(); }
    std::string role(eServerRole role) const override {
        return schema() + (role == eServerRole::kReader   ? "_reader"
                           : role == eServerRole::kEditor ? "_editor"
                                                          : "_maintainer");
    }
    std::vector<std::string> makeSchema(std::span<const std::string> existing) const override {
        std::vector<std::string> sql;
        for (const auto each : {eServerRole::kReader, eServerRole::kEditor, eServerRole::kMaintainer})
            if (std::ranges::find(existing, role(each)) == existing.end())
                sql.push_back("CREATE ROLE " + name(role(each)));
        const std::string owner = name(role(eServerRole::kMaintainer));
        sql.push_back("GRANT " + owner + " TO CURRENT_USER");
        sql.push_back("CREATE SCHEMA " + name(schema()) + " AUTHORIZATION " + owner);
        return sql;
    }
    std::vector<std::string> giveRights() const override {
        const std::string place = " IN SCHEMA " + name(schema());
        const std::string reader = name(role(eServerRole::kReader));
        const std::string editor = name(role(eServerRole::kEditor));
        return {"GRANT USAGE ON SCHEMA " + name(schema()) + " TO " + reader + ", " + editor,
                "GRANT SELECT ON ALL TABLES" + place + " TO " + reader,
                "GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES" + place + " TO " + editor,
                "REVOKE INSERT, UPDATE, DELETE ON " + table(kStateTable) + ", " + table(kVersionTable) +
                    " FROM " + editor,
                "GRANT UPDATE (last_change) ON " + table(kStateTable) + " TO " + editor,
                "REVOKE UPDATE ON " + table(kChangeTable) + ", " + table(kCommitTable) + " FROM " + editor};
    }
    std::vector<std::string> asMaintainer() const override {
        return {"SET LOCAL ROLE " + name(role(eServerRole::kMaintainer)),
                "SET LOCAL search_path = " + name(schema())};
    }

protected:
    const char* textType() const override { return "TEXT"; }
};

class SqliteDialect final : public OdbcDialect {
public:
    using OdbcDialect::OdbcDialect;

    std::string table(const std::string& table) const override { return name(table); }
    std::string selected(const Column& column) const override {
        const std::string cell = name(column.name);
        return column.isReal() ? "CASE typeof(" + cell + ") WHEN 'real' THEN printf('%!.17g', " + cell +
                                     ") ELSE " + cell + " END"
                               : cell;
    }
    std::string columns() const override {
        return "SELECT t.name, c.name FROM sqlite_master t, pragma_table_info(t.name) c WHERE t.type = "
               "'table' AND t.rootpage > 0";
    }
    std::string may(eServerRole) const override { return "SELECT 1"; }
    std::string currentUser() const override { return "''"; }
    std::vector<std::string> makeSchema(std::span<const std::string>) const override { return {}; }

protected:
    const char* textType() const override { return "TEXT"; }
};

} // namespace

std::unique_ptr<OdbcDialect> OdbcDialect::of(const std::string& engine, const std::string& quote,
                                             const std::string& schema) {
    if (engine.find("PostgreSQL") != std::string::npos)
        return std::make_unique<PostgresDialect>(quote, schema);
    if (engine.find("SQLite") != std::string::npos)
        return std::make_unique<SqliteDialect>(quote, schema);
    return std::make_unique<OdbcDialect>(quote, schema);
}

std::string OdbcDialect::name(const std::string& name) const {
    if (m_quote.empty() || m_quote == " ")
        return name;
    return m_quote + replacedAll(name, m_quote.front(), m_quote + m_quote) + m_quote;
}

std::string OdbcDialect::table(const std::string& table) const {
    return name(m_schema) + "." + name(table);
}

std::string OdbcDialect::text(std::string_view text) const {
    return "'" + replacedAll(text, '\'', "''") + "'";
}

std::string OdbcDialect::real(double value) const {
    const std::string text = digits(value);
    return text.find('e') == std::string::npos ? text + (text.find('.') == std::string::npos ? ".0" : "")
                                               : text;
}

std::string OdbcDialect::value(const CellValue& value) const {
    if (const auto* words = std::get_if<KorString>(&value))
        return text(words->view());
    if (const auto* number = std::get_if<double>(&value))
        return real(*number);
    return std::to_string(std::get<std::int64_t>(value));
}

SchemaWords OdbcDialect::words() const {
    return {[this](const std::string& each) { return table(each); },
            [this](const std::string& each) { return name(each); }, textType(), realType()};
}

std::string OdbcDialect::columns() const {
    return "SELECT c.table_name, c.column_name FROM information_schema.columns c JOIN "
           "information_schema.tables t ON t.table_schema = c.table_schema AND t.table_name = c.table_name "
           "WHERE t.table_type = 'BASE TABLE' AND c.table_schema = " +
           text(m_schema);
}

std::string OdbcDialect::may(eServerRole) const {
    return "SELECT COUNT(*) FROM " + table(kStateTable);
}

std::vector<std::string> OdbcDialect::makeSchema(std::span<const std::string>) const {
    return {"CREATE SCHEMA " + name(m_schema)};
}
