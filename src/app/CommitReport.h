#pragma once

#include <functional>

/// Keeps all pending changes for good. Tells the user what could not be kept, one sentence for each file and
/// each conflict. Returns whether everything is stored. Where another program changed a database meanwhile
/// and nothing conflicts, nothing is told yet: `judgedAnew` runs the command again.
bool keepChanges();

/// Runs a command, and again upon what is stored now while other programs change what it judged by, but not
/// for ever. Returns its exit code.
int judgedAnew(const std::function<int()>& command);
