#include "services/OtherWordings.h"

#include "services/KorResources.h"
#include "services/Prompts.h"

#include <algorithm>

OtherWordings::OtherWordings() {
    const std::filesystem::path folder = KorResources::folder() / "prompts";
    const auto own = Prompts::textsOf(folder, Prompts::language());
    for (const std::string& language : Prompts::languages(folder)) {
        if (language == Prompts::language())
            continue;
        for (const auto& [id, text] : Prompts::textsOf(folder, language)) {
            const auto shown = own.find(id);
            if (shown == own.end() || shown->second == text)
                continue;
            std::vector<KorString>& others = m_others[shown->second];
            if (std::ranges::find(others, text) == others.end())
                others.push_back(text);
        }
    }
}

std::vector<KorString> OtherWordings::of(const KorString& shown) const {
    const auto found = m_others.find(shown);
    return found == m_others.end() ? std::vector<KorString>() : found->second;
}
