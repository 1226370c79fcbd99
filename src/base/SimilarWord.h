#pragma once

#include "base/KorString.h"

#include <vector>

/// The candidate that `word` was probably meant to be: the first of those from which it differs least,
/// whatever the case, by letters that are wrong, missing, too many or exchanged. Empty where none differs by
/// less than about a third of its letters.
KorString similarWord(const KorString& word, const std::vector<KorString>& candidates);
