#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Many texts in lower case, one behind the other, to be looked through at once.
class FoldedTexts {
public:
    void reserve(std::size_t count) { m_begins.reserve(count + 1); }
    /// The next one gets the next number, from 0.
    void add(const KorString& text);

    std::size_t size() const { return m_begins.size() - 1; }
    /// Without the mark at its end.
    std::string_view at(std::size_t number) const;

    /// Calls with the numbers of the texts that have the word, which is in lower case, in their order, until
    /// `take` returns false.
    void having(std::string_view word, const std::function<bool(std::size_t number)>& take) const;

private:
    std::string m_texts; // a line break behind each, which no word has
    std::vector<std::uint32_t> m_begins{0};
};
