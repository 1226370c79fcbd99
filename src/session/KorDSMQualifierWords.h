#pragma once

#include "base/KorString.h"

#include <cstdint>

/// Qualifier sets in words.
namespace KorDSMQualifierWords {

/// What a qualifier set of the current source selects, as one sentence without a stop: "Profile family is
/// I and H sections as Main part, and Profile inclination is not Upright". Empty when there is no such set.
KorString sentenceOf(std::int32_t qualifierSet);

} // namespace KorDSMQualifierWords
