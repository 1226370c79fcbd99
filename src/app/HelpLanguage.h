#pragma once

namespace CLI {
class App;
}

/// Puts the help texts of a command line, which is declared in English, and the sentences about wrong usage
/// into the program's language. Names of commands and options stay as they are: scripts use them.
void putIntoLanguage(CLI::App& app);
