#pragma once

#include "base/KorString.h"

#include <vector>

/// " Did you mean "NAME"?" with the candidate that is meant by a word that names nothing; empty where none is
/// like it. It follows the sentence that says so.
KorString didYouMean(const KorString& word, const std::vector<KorString>& candidates);
