#pragma once

#include <chrono>
#include <functional>
#include <string>

/// Waiting for a database that another program has locked, as a window has to do with it.
namespace KorDSMLockWait {

/// Called again and again while `file` is waited for; returns whether to go on waiting. It may run an event
/// loop, but must not use the databases.
using Ask = std::function<bool(const std::string& file, std::chrono::milliseconds waited)>;

/// How long to wait without a word: what another program writes is mostly short.
std::chrono::milliseconds wordless();

/// What is asked in the current session; an empty one waits without a word. Returns the one before.
Ask setAsk(Ask ask);
/// Whether a database is being waited for, so that nothing else may use the databases.
bool isWaiting();
/// Whether what is waited for is an answer of a server, not the end of a lock.
bool isServer(const std::string& file);
/// The user began something new, for which a database is worth waiting for again.
void nextCommand();

} // namespace KorDSMLockWait
