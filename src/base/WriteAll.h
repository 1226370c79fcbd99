#pragma once

#include <string_view>

/// Writes the text to the end at the descriptor's place, however often the system takes only a part of it.
/// Returns false when it takes no more; then a part may have been written.
bool writeAll(int descriptor, std::string_view text);
