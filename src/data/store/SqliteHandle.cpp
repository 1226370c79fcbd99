#include "data/store/SqliteHandle.h"

namespace {

std::string quotedWith(char quote, const std::string& text) {
    std::string quoted(1, quote);
    for (const char c : text) {
        if (c == quote)
            quoted += quote;
        quoted += c;
    }
    return quoted += quote;
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3* db, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    m_code = sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()) + 1, &statement, nullptr);
    m_statement.reset(statement);
}

void SqliteStatement::bind(int parameter, const CellValue& value) const {
    if (const auto* text = std::get_if<KorString>(&value))
        sqlite3_bind_text(get(), parameter, text->c_str(), static_cast<int>(text->size()), SQLITE_STATIC);
    else if (const auto* real = std::get_if<double>(&value))
        sqlite3_bind_double(get(), parameter, *real);
    else
        sqlite3_bind_int64(get(), parameter, std::get<std::int64_t>(value));
}

SqliteValue storedCell(sqlite3_stmt* statement, int column) {
    return SqliteValue(sqlite3_value_dup(sqlite3_column_value(statement, column)));
}

int SqliteConnection::open(const std::string& path, bool readOnly) {
    return openWith(path, readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
}

int SqliteConnection::openInMemory() {
    return openWith(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY);
}

int SqliteConnection::openWith(const std::string& path, int flags) {
    // One thread uses the connection, so the mutex that every column access would take is left out.
    sqlite3* db = nullptr;
    const int code = sqlite3_open_v2(
        path.c_str(), &db, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE,
        nullptr);
    m_db.reset(db);
    return code;
}

int SqliteConnection::distrust() const {
    sqlite3_db_config(get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                             SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL})
        sqlite3_db_config(get(), option, 0, nullptr);
    for (const char* pragma : {"PRAGMA cell_size_check = ON", "PRAGMA mmap_size = 0",
                               "PRAGMA temp_store = MEMORY", "PRAGMA ignore_check_constraints = ON"})
        if (const int code = execute(pragma); code != SQLITE_OK)
            return code;
    return SQLITE_OK;
}

int SqliteConnection::execute(const std::string& sql) const {
    return sqlite3_exec(get(), sql.c_str(), nullptr, nullptr, nullptr);
}

int SqliteConnection::queryInteger(const std::string& sql, std::int64_t& value) const {
    const SqliteStatement query(get(), sql);
    const int code = query.step();
    if (code != SQLITE_ROW)
        return code;
    value = sqlite3_column_int64(query.get(), 0);
    return SQLITE_OK;
}

int SqliteConnection::queryTexts(const std::string& sql, std::vector<std::string>& texts) const {
    const SqliteStatement query(get(), sql);
    int code = query.step();
    for (; code == SQLITE_ROW; code = query.step()) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(query.get(), 0));
        texts.emplace_back(text ? text : "");
    }
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

std::string quotedIdentifier(const std::string& name) {
    return quotedWith('"', name);
}

std::string quotedText(const std::string& text) {
    return quotedWith('\'', text);
}
