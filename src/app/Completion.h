#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// What the shell offers while a command line is typed. Databases are only read, and not waited for.
namespace Completion {

/// The words of a line as a shell divides it, without quotes; the last one is that which is being typed,
/// empty behind a space.
std::vector<std::string> wordsOf(const std::string& line);

/// What can stand in the place of the last word of the line, one a line; behind a tab what it means, where
/// that is known. The lines "\tfiles" and "\tfolders" ask the shell for those.
std::string candidates(const CLI::App& app, const std::string& line);

} // namespace Completion
