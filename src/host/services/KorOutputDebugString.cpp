#include "services/KorOutputDebugString.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {
std::function<void(const KorString&)> g_sink;
}

void KorOutputDebugString(const KorString& text) {
    if (g_sink)
        g_sink(text);
    else if (std::getenv("DETAILSTYLES_DEBUG"))
        std::fputs(text.c_str(), stderr);
}

void setDebugOutputSink(std::function<void(const KorString&)> sink) {
    g_sink = std::move(sink);
}
