#pragma once

#include "base/KorString.h"

#include <functional>

/// Writes to the debug output, which users don't see: standard error when the environment variable
/// DETAILSTYLES_DEBUG is set, otherwise nowhere.
void KorOutputDebugString(const KorString& text);

/// Replaces the debug output; an empty sink means the default.
void setDebugOutputSink(std::function<void(const KorString&)> sink);
