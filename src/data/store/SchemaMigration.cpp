#include "data/store/SchemaMigration.h"

#include <algorithm>

namespace {

int runAll(const SqliteConnection& connection, const std::vector<std::string>& statements) {
    for (const std::string& statement : statements)
        if (const int code = connection.execute(statement); code != SQLITE_OK)
            return code;
    return SQLITE_OK;
}

int migrateTo(const SqliteConnection& connection, const SchemaHistory& history,
              const SchemaVersion& version) {
    StoredColumns stored;
    int code = stored.read(connection);
    if (code == SQLITE_OK)
        code = runAll(connection, history.additions(version.number, stored));
    if (code == SQLITE_OK)
        code = runAll(connection, version.statements);
    if (code == SQLITE_OK)
        code = connection.execute("PRAGMA user_version = " + std::to_string(version.number));
    return code;
}

// Whether it is what the database holds that hinders the migration.
bool isOfContent(int code) {
    constexpr int kCodes[] = {SQLITE_ERROR, SQLITE_CONSTRAINT, SQLITE_MISMATCH, SQLITE_TOOBIG, SQLITE_RANGE};
    return std::ranges::find(kCodes, code & 0xFF) != std::end(kCodes);
}

} // namespace

Result<> migrate(const SqliteDatabase& database, const SchemaHistory& history, int from) {
    for (const SchemaVersion& version : history.versions()) {
        if (version.number <= from)
            continue;
        const int code = migrateTo(database.connection, history, version);
        if (code != SQLITE_OK && isOfContent(code))
            return faultResult(eStoreFault::kNotMigrated, database.file,
                               version.purpose + ": " + sqlite3_errmsg(database.connection.get()));
        if (code != SQLITE_OK)
            return database.failure(code);
    }
    return {};
}

Result<> copyToMemory(const SqliteDatabase& database, SqliteDatabase& copy) {
    if (const int code = copy.connection.openInMemory(); code != SQLITE_OK)
        return copy.failure(code);
    sqlite3_backup* backup =
        sqlite3_backup_init(copy.connection.get(), "main", database.connection.get(), "main");
    if (!backup)
        return copy.failure(sqlite3_errcode(copy.connection.get()));
    const int code = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (code != SQLITE_DONE)
        return database.failure(code);
    const int distrusted = copy.connection.distrust();
    return distrusted == SQLITE_OK ? Result<>() : copy.failure(distrusted);
}
