#pragma once

#include <functional>
#include <source_location>

/// Internal consistency checks: a failed check is reported with its expression text, source file and
/// line, and the program goes on with the fallback that the caller states.
namespace KorAssert {

/// Receives every failed check. `expression` and `file` are valid only during the call.
using Sink = std::function<void(const char* expression, const char* file, int line)>;

/// Reports a failed check to the sink.
void korAssert(const char* expression, const char* file, int line);

/// Reports `expression` as failed when `ok` is false, from the place of the call. Returns `ok`, so that a
/// caller can state its fallback: `if (!KorAssert::check(n > 0, "n > 0")) return 0;`
bool check(bool ok, const char* expression, std::source_location where = std::source_location::current());

/// Replaces the sink and returns the previous one. An empty sink means the default, which writes one
/// line to standard error.
Sink setSink(Sink sink);

} // namespace KorAssert
