#include "app/Commands.h"
#include "app/Console.h"
#include "app/ServerOptions.h"
#include "app/ServerPlace.h"
#include "base/Translation.h"
#include "data/store/odbc/OdbcLog.h"
#include "data/store/odbc/OdbcStore.h"
#include "data/store/odbc/OdbcTables.h"
#include "session/KorDSMPasswords.h"

namespace {

KorString number(std::int64_t value) {
    return KorString::number(value);
}

Result<> create(OdbcDatabase& database) {
    OdbcSchema schema(database);
    Result<> result = schema.create();
    if (!result)
        return result;
    Console::sayStored(KorString::format(translated("Made the styles of \"%s\", empty."), {database.name()}));
    const OdbcDialect& dialect = *database.dialect;
    if (!dialect.role(eServerRole::kReader).empty())
        Console::say(
            KorString::format(translated("Give each user one of the roles %s (reads), %s (reads and changes) "
                                         "and %s (looks after it)."),
                              {dialect.role(eServerRole::kReader), dialect.role(eServerRole::kEditor),
                               dialect.role(eServerRole::kMaintainer)}));
    KorString former;
    for (const std::string& users : schema.formerUsers())
        former = former + (former.isEmpty() ? "" : ", ") + users;
    if (!former.isEmpty())
        Console::complain(KorString::format(
            translated("Roles belong to the whole server, so these may use these styles already: %s."),
            {former}));
    return {};
}

Result<> upgrade(OdbcDatabase& database) {
    int from = 0;
    const int to = SchemaHistory::own().current();
    Result<> result = OdbcSchema(database).upgrade(from);
    if (!result)
        return result;
    if (from == to)
        Console::say(KorString::format(translated("\"%s\" is of the present version (%s)."),
                                       {database.name(), number(to)}));
    else
        Console::sayStored(KorString::format(translated("Brought \"%s\" from version %s to version %s."),
                                             {database.name(), number(from), number(to)}));
    return {};
}

KorString rightsOf(OdbcDatabase& database) {
    for (const auto& [role, words] :
         {std::pair(eServerRole::kMaintainer, translatable("You may look after it, read and change it.")),
          std::pair(eServerRole::kEditor, translatable("You may read and change it.")),
          std::pair(eServerRole::kReader, translatable("You may read it."))}) {
        std::optional<std::int64_t> may;
        if (database.queryInteger(database.dialect->may(role), may) && may.value_or(0) != 0)
            return translated(words);
    }
    return translated("You may not read it.");
}

Result<> status(OdbcDatabase& database) {
    OdbcSchema::State state;
    Result<> result = OdbcSchema(database).read(state);
    if (!result)
        return result;
    Console::say(KorString::format(translated("%s: version %s, changes: %s"),
                                   {database.name(), number(state.version), number(state.lastChange)}));
    OdbcRows rows;
    const std::string last = "SELECT stored_by, stored_at FROM " + database.dialect->table(kCommitTable) +
                             " WHERE sequence = " + std::to_string(state.lastChange);
    result = database.failure(database.connection.query(last, rows));
    if (!rows.empty())
        Console::say(KorString::format(
            translated("The last one is of %s, at %s."),
            {rows.front()[0].value_or(""), OdbcLog::localTime(rows.front()[1].value_or(""))}));
    Console::say(rightsOf(database));
    return result;
}

Result<> check(const ServerAddress& address) {
    const SourceSettings::Checked checked = SourceSettings::check(address);
    if (checked)
        Console::say(checked.value);
    return {checked.error};
}

} // namespace

int serverCommand(DataFolder& folder, const ServerOptions& options) {
    const Result<ServerAddress> address = ServerPlace::serverOf(folder, options.where);
    Result<> result{address.error};
    if (result && options.action == eServerAction::kCheck)
        result = check(address.value);
    else if (result) {
        ServerAddress where = address.value;
        auto database = std::make_unique<OdbcDatabase>(where, OdbcLimits());
        result = database->connect();
        if (database->opened.isRefusal()) {
            where.password = KorDSMPasswords::current().known(where);
            database = std::make_unique<OdbcDatabase>(where, OdbcLimits());
            result = database->connect();
        }
        if (result)
            result = options.action == eServerAction::kCreate    ? create(*database)
                     : options.action == eServerAction::kUpgrade ? upgrade(*database)
                                                                 : status(*database);
    }
    if (!result)
        Console::complain(KorString(result.error));
    return result ? kExitDone : kExitFailed;
}
