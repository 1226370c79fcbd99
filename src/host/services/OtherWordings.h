#pragma once

#include "base/KorString.h"

#include <unordered_map>
#include <vector>

/// What texts that are shown are called in the other languages that the program has, so that they are found
/// by any of these words.
class OtherWordings {
public:
    /// Reads the texts of the other languages from the folder of the program's own.
    OtherWordings();

    /// The text in each other language in which it reads otherwise; several where several texts read like it.
    /// Nothing for a text that is no prompt. Marks of keys and the dots of commands with a dialog count for
    /// nothing.
    std::vector<KorString> of(const KorString& shown) const;

private:
    std::unordered_map<KorString, std::vector<KorString>>
        m_others; // by the text that is shown, as it is read
};
