#include "data/store/odbc/OdbcSchema.h"

#include "data/store/odbc/OdbcTables.h"

namespace {

constexpr const char* kApplication = "detail styles";

/// A transaction that is taken back unless it is kept.
class Transaction {
public:
    explicit Transaction(OdbcDatabase& database)
        : m_database(database), m_begun(database.connection.begin()) {}
    ~Transaction() {
        if (m_database.connection.isInTransaction())
            static_cast<void>(m_database.connection.end(false));
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    Result<> begun() const { return m_database.failure(m_begun); }
    Result<> keep() { return m_database.failure(m_database.connection.end(true)); }

private:
    OdbcDatabase& m_database;
    OdbcError m_begun;
};

} // namespace

std::string OdbcSchema::lastChangeSql() const {
    return "SELECT last_change FROM " + m_database.dialect->table(kStateTable);
}

Result<> OdbcSchema::read(State& state) {
    OdbcRows rows;
    const OdbcError error = m_database.connection.query(
        "SELECT application, version, last_change FROM " + m_database.dialect->table(kStateTable), rows);
    if (error.kind == OdbcError::eKind::kNoSchema)
        return m_database.fault(eServerFault::kNoStyles);
    if (error)
        return m_database.failure(error);
    if (rows.size() != 1 || rows.front().front() != kApplication)
        return m_database.fault(eServerFault::kOtherContent);
    state.version = static_cast<int>(numberIn(rows.front()[1]));
    state.lastChange = numberIn(rows.front()[2]);
    return {};
}

Result<> OdbcSchema::create() {
    State state;
    if (read(state))
        return m_database.fault(eServerFault::kExists);
    Transaction transaction(m_database);
    Result<> result = transaction.begun();
    if (result)
        result = makeAll();
    return result ? transaction.keep() : result;
}

Result<> OdbcSchema::makeAll() {
    const OdbcDialect& dialect = *m_database.dialect;
    std::vector<std::string> roles;
    if (Result<> result = lookForRoles(roles); !result)
        return result;
    for (const auto& statements : {dialect.makeSchema(roles), dialect.asMaintainer(), ownTables(),
                                   m_history.creation(dialect.words())})
        if (Result<> result = m_database.execute(statements); !result)
            return result;
    Result<> result = noteVersion(m_history.current());
    return result ? m_database.execute(dialect.giveRights()) : result;
}

Result<> OdbcSchema::lookForRoles(std::vector<std::string>& existing) {
    const OdbcDialect& dialect = *m_database.dialect;
    if (dialect.schema().size() > dialect.longestSchema())
        return m_database.fault(eServerFault::kLongName, std::to_string(dialect.longestSchema()));
    OdbcRows rows;
    if (dialect.roles().empty())
        return {};
    if (const OdbcError error = m_database.connection.query(dialect.roles(), rows))
        return m_database.failure(error);
    for (const auto& row : rows) {
        const std::string& role = existing.emplace_back(row[0].value_or(""));
        if (role == dialect.role(eServerRole::kMaintainer) && numberIn(row[1]) == 0)
            return m_database.fault(eServerFault::kRolesTaken);
        if (const std::string users = row[2].value_or(""); !users.empty())
            m_formerUsers.push_back(users + " (" + role + ")");
    }
    return {};
}

std::vector<std::string> OdbcSchema::ownTables() const {
    const OdbcDialect& dialect = *m_database.dialect;
    const std::string text = " VARCHAR(250) NOT NULL";
    const std::string state = dialect.table(kStateTable);
    return {
        "CREATE TABLE " + state + " (id INTEGER PRIMARY KEY, application" + text +
            ", version INTEGER NOT NULL, last_change BIGINT NOT NULL)",
        "INSERT INTO " + state + " (id, application, version, last_change) VALUES (1, " +
            dialect.text(kApplication) + ", " + std::to_string(m_history.current()) + ", 0)",
        "CREATE TABLE " + dialect.table(kVersionTable) + " (version INTEGER PRIMARY KEY, made_by" + text +
            ", made_at" + text + ")",
        "CREATE TABLE " + dialect.table(kCommitTable) +
            " (mark BIGINT PRIMARY KEY, sequence BIGINT NOT NULL, stored_by" + text + ", stored_at" + text +
            ")",
        "CREATE TABLE " + dialect.table(kChangeTable) + " (sequence BIGINT NOT NULL, style_table" + text +
            ", row_key INTEGER NOT NULL, kind CHAR(1) NOT NULL)",
        "CREATE INDEX dsdb_change_sequence ON " + dialect.table(kChangeTable) + " (sequence)",
        "CREATE INDEX dsdb_commit_sequence ON " + dialect.table(kCommitTable) + " (sequence)",
    };
}

Result<> OdbcSchema::noteVersion(int number) {
    const OdbcDialect& dialect = *m_database.dialect;
    return m_database.execute("INSERT INTO " + dialect.table(kVersionTable) +
                              " (version, made_by, made_at) VALUES (" + std::to_string(number) + ", " +
                              dialect.currentUser() + ", CURRENT_TIMESTAMP)");
}

Result<> OdbcSchema::upgrade(int& from) {
    std::optional<std::int64_t> isMaintainer;
    State state;
    Result<> result = read(state);
    from = state.version;
    if (!result)
        return result;
    if (state.version > m_history.current())
        return m_database.fault(eServerFault::kNewer, std::to_string(state.version));
    result = m_database.queryInteger(m_database.dialect->may(eServerRole::kMaintainer), isMaintainer);
    if (result && isMaintainer.value_or(0) == 0)
        result = m_database.fault(eServerFault::kMayNotChange);
    if (!result || state.version == m_history.current())
        return result;
    Transaction transaction(m_database);
    result = transaction.begun();
    if (result)
        result = bringForward(from);
    return result ? transaction.keep() : result;
}

// Raising the number of the last change first keeps all others out, and tells them afterwards.
Result<> OdbcSchema::bringForward(int& from) {
    const OdbcDialect& dialect = *m_database.dialect;
    const std::string change = "UPDATE " + dialect.table(kStateTable) + " SET ";
    State state;
    Result<> result = m_database.execute(change + "last_change = last_change + 1");
    if (result)
        result = read(state);
    if (!result)
        return result;
    from = state.version; // another maintainer may have been first
    result = m_database.execute(change + "version = " + std::to_string(m_history.current()));
    if (result) // what was written there by others than this is not believed
        result = m_database.execute("DELETE FROM " + dialect.table(kVersionTable) + " WHERE version > " +
                                    std::to_string(from));
    if (result)
        result = m_database.execute(dialect.asMaintainer());
    for (const SchemaVersion& version : m_history.versions())
        if (result && version.number > from)
            result = addVersion(version.number);
    return result ? m_database.execute(dialect.giveRights()) : result;
}

Result<> OdbcSchema::addVersion(int number) {
    StoredColumns columns;
    Result<> result = m_database.readColumns(columns);
    if (result)
        result = m_database.execute(m_history.additions(number, columns, m_database.dialect->words()));
    for (const SchemaVersion& version : m_history.versions())
        if (result && version.number == number)
            result = m_database.execute(version.statements);
    return result ? noteVersion(number) : result;
}
