#include "app/ArgumentTypes.h"
#include "app/CommandDeclarations.h"
#include "app/ServerOptions.h"
#include "base/Translation.h"

namespace {

constexpr const char* kWhere =
    translatable("A source that sources.ini of the data folder puts on a server, or a connection such as "
                 "\"Driver=PostgreSQL Unicode;Server=...;Database=...;Schema=...\"");

} // namespace

void declareServers(CLI::App& app, Wanted& wanted) {
    CLI::App* server = app.add_subcommand(
        "server", translatable("Look after styles that an office has on a database server"));
    server->require_subcommand(1);
    server->fallthrough();
    const std::tuple<const char*, eServerAction, const char*> actions[] = {
        {"create", eServerAction::kCreate, translatable("Make an empty schema of styles with its roles")},
        {"check", eServerAction::kCheck, translatable("Say whether it can be used, or what is in the way")},
        {"upgrade", eServerAction::kUpgrade, translatable("Bring the schema to the version of this program")},
        {"status", eServerAction::kStatus, translatable("Say what it is, and what you may do with it")},
    };
    for (const auto& [name, action, help] : actions) {
        const auto options = std::make_shared<ServerOptions>();
        options->action = action;
        CLI::App* command = addCommand(*server, wanted, name, help, &serverCommand, options);
        command->add_option("WHERE", options->where, kWhere)->required()->check(refuseEmpty);
        command->parse_complete_callback([&wanted] { wanted.opensFolder = false; });
    }

    const auto options = std::make_shared<CopyDatabaseOptions>();
    CLI::App* copy = addCommand(
        app, wanted, "copy-database",
        translatable("Copy a whole database between files and servers, with its keys, all or nothing"),
        &copyDatabaseCommand, options);
    copy->add_option("FROM", options->from,
                     translatable("A file, a source that is on a server, or a connection"))
        ->required()
        ->check(refuseEmpty);
    copy->add_option("TO", options->to, translatable("The same: a new file, or an empty schema of styles"))
        ->required()
        ->check(refuseEmpty);
    copy->parse_complete_callback([&wanted] { wanted.opensFolder = false; });
}
