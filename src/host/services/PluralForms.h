#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <string>

/// Which form of a text goes with a number. A language has one or more forms, such as "1 style" and "2
/// styles", by a rule of this name: "other" (one form), "one-other", "zero-one-other" (0 is as 1),
/// "east-slavic", "west-slavic", "polish".
namespace PluralForms {

/// The place of the form, from 0; that of "one-other" for a rule that is not known.
std::size_t formFor(const std::string& rule, std::int64_t number);
bool isKnown(const std::string& rule);

/// Of forms with '|' between them that with this place, or the last one.
KorString choose(const KorString& forms, std::size_t place);

} // namespace PluralForms
