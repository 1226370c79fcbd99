#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <vector>

/// Qualifier sets in words.
namespace KorDSMQualifierWords {

/// What a qualifier set of the current source selects, as one sentence without a stop: "Profile family is
/// I and H sections as Main part, and Profile inclination is not Upright". Empty when there is no such set.
KorString sentenceOf(std::int32_t qualifierSet);

/// The names of properties that are known, in the order of the alphabet: those that qualifiers of the current
/// source ask for, and those that objects of the sample parts have. Reads the parts when first asked.
std::vector<KorString> properties();

} // namespace KorDSMQualifierWords
