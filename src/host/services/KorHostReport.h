#pragma once

#include "base/KorString.h"

#include <functional>
#include <vector>

/// Sentences for the user about things that went wrong outside the program: each names the file concerned
/// and says what to do. They are kept until somebody shows them.
class KorHostReport {
public:
    /// Adds a sentence; the same sentence is kept once.
    static void add(const KorString& sentence);
    /// The sentences since the last call, oldest first.
    static std::vector<KorString> take();
};
