#pragma once

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// What stands in the place of an argument.
enum class eArgument {
    kText, ///< whatever the user likes
    kKind,
    kRecord, ///< the name of a record of the kind that stands before
    kColumn,
    kValue,      ///< of the column that stands before
    kAssignment, ///< COLUMN=VALUE
    kSource,
    kStyle,
    kView,
    kPart,
    kFile,
    kFolder,
    kWord, ///< one of those that the type itself names, with '|'
};

/// What an option or positional argument takes.
struct ArgumentType {
    std::string name;  ///< of the option or positional, "--source" or "KIND"
    std::string shown; ///< in help, such as "SOURCE" behind the option
    eArgument what = eArgument::kText;
};

/// The type of an option, by its name; one of text where nothing is known of it. Null for a flag.
const ArgumentType* argumentType(const CLI::Option& option);
/// What a text that must name something is refused for; empty where it is not empty. Such as of a variable
/// that is not set, an empty text is no choice.
std::string refuseEmpty(const std::string& text);
/// Gives the options of all commands the names of what they take, for their help, and lets those that take
/// the data folder or a source refuse an empty text.
void nameArguments(CLI::App& app);
