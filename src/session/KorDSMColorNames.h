#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <optional>

/// Drawing colours, 0 to 256, as users read and type them.
namespace KorDSMColorNames {

inline constexpr int kByLayer = 256;

/// What the colour is called, such as "Red" or "Azure, dark"; an empty text out of range.
KorString name(std::int64_t color);
/// Number and name, such as "1 Red"; the number alone out of range.
KorString text(std::int64_t color);
/// The colour that a text means by its name, or by number and name as `text` gives them; nothing otherwise.
/// Of colours that share a name the first is meant.
std::optional<int> parse(const KorString& text);

} // namespace KorDSMColorNames
