#include "session/FoldedTexts.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

bool isPlain(std::string_view text) {
    // All bytes at once: most are plain to the end.
    return std::accumulate(text.begin(), text.end(), 0U, [](unsigned bits, char byte) {
               return bits | static_cast<unsigned char>(byte);
           }) < 0x80;
}

char lowered(char byte) {
    return static_cast<char>(byte + (byte >= 'A' && byte <= 'Z' ? 'a' - 'A' : 0));
}

} // namespace

void FoldedTexts::add(const KorString& text) {
    // Most texts are plain, and need no copy of their own.
    if (const std::string_view plain = text.view(); isPlain(plain)) {
        const std::size_t begin = m_texts.size();
        m_texts.resize(begin + plain.size());
        std::ranges::transform(plain, m_texts.begin() + static_cast<std::ptrdiff_t>(begin), lowered);
    } else {
        m_texts += text.lowered().view();
    }
    m_texts += '\n';
    m_begins.push_back(static_cast<std::uint32_t>(m_texts.size()));
}

std::string_view FoldedTexts::at(std::size_t number) const {
    return std::string_view(m_texts).substr(m_begins[number], m_begins[number + 1] - m_begins[number] - 1);
}

void FoldedTexts::having(std::string_view word, const std::function<bool(std::size_t number)>& take) const {
    const char* const begin = m_texts.data();
    const char* const end = begin + m_texts.size();
    std::size_t number = 0;
    for (const char* from = begin; from < end;) {
        const auto* found = static_cast<const char*>(
            memmem(from, static_cast<std::size_t>(end - from), word.data(), word.size()));
        if (!found)
            return;
        const auto at = static_cast<std::uint32_t>(found - begin);
        // Mostly one of the next few.
        for (int step = 0; step < 8 && m_begins[number + 1] <= at; ++step)
            ++number;
        if (m_begins[number + 1] <= at)
            number = static_cast<std::size_t>(std::ranges::upper_bound(m_begins, at) - m_begins.begin()) - 1;
        if (!take(number))
            return;
        from = begin + m_begins[number + 1];
    }
}
