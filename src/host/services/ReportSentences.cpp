#include "services/KorHostReport.h"
#include "services/Prompts.h"

#include <utility>

// The wording of what was reported. Prompts report too, so those who report must not need this.

std::vector<KorString> KorHostReport::take() {
    Prompts::language(); // reading the texts can report too
    std::vector<KorString> sentences;
    for (const Entry& entry : std::exchange(entries(), {}))
        sentences.push_back(sentenceOf(entry));
    return sentences;
}

KorString KorHostReport::sentenceOf(const Entry& entry) {
    const auto& [first, second, third] = entry.texts;
    if (entry.number == 0)
        return first;
    // Without its text, a report still says what it is about.
    const KorString pattern =
        Prompts::has("DSM", entry.number)
            ? Prompts::dsm(entry.number)
            : KorString::format("DSM %d: %%s %%s %%s", {KorString::number(entry.number)});
    return KorString::format(pattern, {first, second, third}).trimmed();
}
