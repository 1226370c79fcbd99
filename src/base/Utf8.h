#pragma once

#include <string_view>

/// Whether `text` is well-formed UTF-8 without the character 0: no overlong forms, no surrogates, nothing
/// above U+10FFFF.
bool isCleanUtf8(std::string_view text);
