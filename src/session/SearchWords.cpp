#include "session/SearchWords.h"

#include <algorithm>

namespace {

bool isLetter(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || (value >= '0' && value <= '9') || (value >= 'a' && value <= 'z') ||
           (value >= 'A' && value <= 'Z');
}

bool beginsWord(std::string_view text, std::size_t at) {
    return at == 0 || !isLetter(text[at - 1]) || !isLetter(text[at]);
}

// Whether the text has the word, and whether it begins one there.
struct WordFound {
    bool isThere = false;
    bool isBegin = false;
};

WordFound look(std::string_view text, std::string_view word) {
    WordFound found;
    for (std::size_t at = text.find(word); at != std::string_view::npos && !found.isBegin;
         at = text.find(word, at + 1)) {
        found.isThere = true;
        found.isBegin = beginsWord(text, at);
    }
    return found;
}

// The text in lower case, and for each of its bytes the place in the original.
struct Folded {
    std::string text;
    std::vector<std::size_t> places;

    explicit Folded(std::string_view original) {
        for (std::size_t begin = 0; begin < original.size();) {
            std::size_t end = begin + 1;
            while (end < original.size() && (original[end] & 0xC0) == 0x80)
                ++end;
            const KorString lowered = KorString(original.substr(begin, end - begin)).lowered();
            text += lowered.view();
            places.resize(text.size(), begin);
            begin = end;
        }
        places.push_back(original.size());
    }
};

} // namespace

SearchWords::SearchWords(const KorString& typed) {
    const std::string text = typed.lowered().toStdString();
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(" \t\n", begin), text.size());
        if (end > begin)
            m_words.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    for (const std::string& word : m_words)
        m_phrase += (m_phrase.empty() ? "" : " ") + word;
}

std::optional<SearchFit> SearchWords::fit(std::string_view folded, std::string_view context) const {
    SearchFit fit;
    bool isInText = false;
    for (const std::string& word : m_words) {
        const WordFound found = look(folded, word);
        if (!found.isThere && context.find(word) == std::string_view::npos)
            return std::nullopt;
        isInText = isInText || found.isThere;
        fit.isInside = fit.isInside || (found.isThere && !found.isBegin);
    }
    if (!isInText)
        return std::nullopt;
    fit.isPart = folded != m_phrase;
    fit.isLater = !folded.starts_with(m_phrase);
    return fit;
}

std::vector<std::string> SearchWords::missingIn(std::string_view context) const {
    std::vector<std::string> missing;
    for (const std::string& word : m_words)
        if (context.find(word) == std::string_view::npos)
            missing.push_back(word);
    return missing;
}

std::vector<SearchMark> SearchWords::marks(const KorString& shown) const {
    const Folded folded(shown.view());
    std::vector<bool> isMarked(shown.size() + 1, false);
    for (const std::string& word : m_words)
        for (std::size_t at = folded.text.find(word); at != std::string::npos;
             at = folded.text.find(word, at + word.size()))
            std::fill(isMarked.begin() + static_cast<std::ptrdiff_t>(folded.places[at]),
                      isMarked.begin() + static_cast<std::ptrdiff_t>(folded.places[at + word.size()]), true);
    std::vector<SearchMark> marks;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (!isMarked[i])
            continue;
        if (i == 0 || !isMarked[i - 1])
            marks.push_back({i, 0});
        ++marks.back().length;
    }
    return marks;
}
