#pragma once

#include "base/KorString.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Error;
} // namespace CLI

/// What is wrong with a command line that was not understood, in one sentence with what was meant: a command,
/// option or file that there is not, or an option with too few words. `words` are those behind the program's
/// name. Empty where it is something else, which the fault itself says, or where help was asked for.
KorString wrongUsage(const CLI::App& app, const std::vector<std::string>& words, const CLI::Error& fault);
