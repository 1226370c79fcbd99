#pragma once

#include "base/KorString.h"

#include <array>
#include <vector>

/// Sentences for the user about things that went wrong outside the program: each names the file concerned
/// and says what to do. They are kept until somebody shows them.
class KorHostReport {
public:
    /// Adds a sentence; the same sentence is kept once.
    static void add(const KorString& sentence);
    /// Adds the text "DSM" `number` with its arguments. It is looked up when the sentence is taken: settings
    /// are read before the language of the texts is known.
    static void add(int number, const KorString& first, const KorString& second = {},
                    const KorString& third = {});
    /// The sentences since the last call, oldest first.
    static std::vector<KorString> take();

private:
    struct Entry {
        int number = 0; ///< 0: the sentence is ready, as the first text
        std::array<KorString, 3> texts;

        bool operator==(const Entry&) const = default;
    };

    static std::vector<Entry>& entries();
    static void addOnce(Entry entry);
    static KorString sentenceOf(const Entry& entry);
};
