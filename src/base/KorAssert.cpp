#include "base/KorAssert.h"

#include <cstdio>
#include <utility>

namespace KorAssert {

namespace {
Sink g_sink;
}

void korAssert(const char* expression, const char* file, int line) {
    if (g_sink)
        g_sink(expression, file, line);
    else
        std::fprintf(stderr, "detailstyles: internal check failed: %s (%s:%d)\n", expression, file, line);
}

bool check(bool ok, const char* expression, std::source_location where) {
    if (!ok)
        korAssert(expression, where.file_name(), static_cast<int>(where.line()));
    return ok;
}

Sink setSink(Sink sink) {
    return std::exchange(g_sink, std::move(sink));
}

} // namespace KorAssert
