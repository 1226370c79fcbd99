#include "services/KorOutputDebugString.h"

#include "base/EditorSession.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {
struct DebugOutput {
    std::function<void(const KorString&)> sink;
};
} // namespace

void KorOutputDebugString(const KorString& text) {
    if (const auto& sink = EditorSession::currentPart<DebugOutput>().sink)
        sink(text);
    else if (std::getenv("DETAILSTYLES_DEBUG"))
        std::fputs(text.c_str(), stderr);
}

void setDebugOutputSink(std::function<void(const KorString&)> sink) {
    EditorSession::currentPart<DebugOutput>().sink = std::move(sink);
}
