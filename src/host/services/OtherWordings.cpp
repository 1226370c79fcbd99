#include "services/OtherWordings.h"

#include "services/KorResources.h"
#include "services/Prompts.h"

#include <algorithm>

namespace {

// As it is read: without the mark of its key and the dots of a dialog that follows.
KorString plain(const KorString& text) {
    constexpr std::string_view kDots = "…";
    std::string read = text.toStdString();
    std::erase(read, '&');
    if (read.ends_with(kDots))
        read.resize(read.size() - kDots.size());
    return KorString(read).trimmed();
}

} // namespace

OtherWordings::OtherWordings() {
    const std::filesystem::path folder = KorResources::folder() / "prompts";
    const auto own = Prompts::textsOf(folder, Prompts::language());
    for (const std::string& language : Prompts::languages(folder)) {
        if (language == Prompts::language())
            continue;
        for (const auto& [id, text] : Prompts::textsOf(folder, language)) {
            const auto shown = own.find(id);
            const KorString word = plain(text);
            if (shown == own.end() || plain(shown->second) == word)
                continue;
            std::vector<KorString>& others = m_others[plain(shown->second)];
            if (std::ranges::find(others, word) == others.end())
                others.push_back(word);
        }
    }
}

std::vector<KorString> OtherWordings::of(const KorString& shown) const {
    const auto found = m_others.find(plain(shown));
    return found == m_others.end() ? std::vector<KorString>() : found->second;
}
