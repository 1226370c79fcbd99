#include "app/CommandDeclarations.h"
#include "app/Completion.h"
#include "app/Console.h"
#include "app/Manual.h"
#include "base/Translation.h"
#include "data/store/SchemaHistory.h"

#include <QtGlobal>

#include <sqlite3.h>

// With which another installation can be compared.
std::string versionText() {
    return KorString::format(
               "detailstyles %s\n%s\nQt %s, SQLite %s, CLI11 %s",
               {DETAILSTYLES_VERSION,
                KorString::format(translated("Schema %s"),
                                  {KorString::number(std::int64_t{SchemaHistory::own().current()})}),
                qVersion(), sqlite3_libversion(), CLI11_VERSION})
        .toStdString();
}

void declareMachinery(CLI::App& app, Wanted& wanted) {
    const auto add = [&app, &wanted](const char* name, const std::shared_ptr<std::string>& what,
                                     const std::function<std::string()>& make) {
        CLI::App* command = app.add_subcommand(name)->group("");
        command->add_option("WHAT", *what)->required();
        command->parse_complete_callback([&wanted] { wanted.opensFolder = false; });
        command->callback([&wanted, make] {
            wanted.command = [make](DataFolder&) {
                Console::sayAsItIs(make());
                return kExitDone;
            };
        });
    };
    const auto line = std::make_shared<std::string>();
    add("complete", line, [&app, line] { return Completion::candidates(app, *line); });
    const auto page = std::make_shared<std::string>();
    add("manual", page, [&app, page] {
        return *page == "dsdb"    ? Manual::formatPage()
               : *page == "table" ? Manual::commandTable(app)
                                  : Manual::programPage(app);
    });
}
