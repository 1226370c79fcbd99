#pragma once

#include <cstdio>
#include <functional>
#include <source_location>
#include <utility>

/// Internal consistency checks: a failed check is reported with its expression text, source file and line,
/// and the program goes on with the fallback that the caller states.
namespace KorAssert {

/// Receives every failed check. `expression` and `file` are valid only during the call.
using Sink = std::function<void(const char* expression, const char* file, int line)>;

namespace detail {
inline Sink g_sink; // empty: one line on standard error
}

/// Reports a failed check to the sink.
inline void korAssert(const char* expression, const char* file, int line) {
    if (detail::g_sink)
        detail::g_sink(expression, file, line);
    else
        std::fprintf(stderr, "detailstyles: internal check failed: %s (%s:%d)\n", expression, file, line);
}

/// Reports `expression` as failed when `ok` is false, from the place of the call. Returns `ok`, so that a
/// caller can state its fallback: `if (!KorAssert::check(n > 0, "n > 0")) return 0;`
inline bool check(bool ok, const char* expression,
                  std::source_location where = std::source_location::current()) {
    if (!ok)
        korAssert(expression, where.file_name(), static_cast<int>(where.line()));
    return ok;
}

/// Replaces the sink and returns the previous one. An empty sink means the default.
inline Sink setSink(Sink sink) {
    return std::exchange(detail::g_sink, std::move(sink));
}

} // namespace KorAssert
