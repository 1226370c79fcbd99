#pragma once

#include "base/KorString.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// How well a text fits what is looked for; the lesser the better.
struct SearchFit {
    bool isInside = false; ///< a word was found only in the middle of a word
    bool isPart = false;   ///< the text is more than what was typed
    bool isLater = false;  ///< the text does not begin with what was typed

    auto operator<=>(const SearchFit&) const = default;
};

/// A stretch of a text, in bytes.
struct SearchMark {
    std::size_t begin = 0;
    std::size_t length = 0;

    bool operator==(const SearchMark&) const = default;
};

/// What is looked for: words with blanks between them, in upper or lower case.
class SearchWords {
public:
    SearchWords() = default;
    explicit SearchWords(const KorString& typed);

    bool isEmpty() const { return m_words.empty(); }
    const std::vector<std::string>& words() const { return m_words; }

    /// How well the text fits, which stands in a context, such as a value below its caption: each word must
    /// be in the text or in the context, and one of them in the text. Both in lower case.
    std::optional<SearchFit> fit(std::string_view folded, std::string_view context = {}) const;
    /// Those that are not in the context: the text must have them. Empty where the context has all.
    std::vector<std::string> missingIn(std::string_view context) const;
    /// Where the words are in a text as it is shown, in its order and without overlaps.
    std::vector<SearchMark> marks(const KorString& shown) const;

private:
    std::string m_phrase; // all words, with one blank between them
    std::vector<std::string> m_words;
};
