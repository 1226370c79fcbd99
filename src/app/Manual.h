#pragma once

#include <string>

namespace CLI {
class App;
}

/// Pages of the manual in the format of man, in the program's language, and the table of commands in
/// README.md: made from the declarations of the command line and of the tables.
namespace Manual {

/// detailstyles(1).
std::string programPage(const CLI::App& app);
/// dsdb(5), the format of style databases.
std::string formatPage();
/// A row for each command, with its arguments and what it does.
std::string commandTable(const CLI::App& app);

/// A command with all that it takes, as one writes it: `show KIND NAME [--source SOURCE] [--json]`.
std::string synopsis(const CLI::App& command);

} // namespace Manual
