#include "services/KorHostReport.h"

#include "base/EditorSession.h"
#include "services/Prompts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

struct Entry {
    int number = 0; // 0: the sentence is ready, as the first text
    std::array<KorString, 3> texts;

    bool operator==(const Entry&) const = default;
};

struct WaitingReport {
    std::vector<Entry> entries;
};

void addOnce(Entry entry) {
    std::vector<Entry>& entries = EditorSession::currentPart<WaitingReport>().entries;
    if (std::ranges::find(entries, entry) == entries.end())
        entries.push_back(std::move(entry));
}

KorString sentenceOf(const Entry& entry) {
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

} // namespace

void KorHostReport::add(const KorString& sentence) {
    addOnce({0, {sentence}});
}

void KorHostReport::add(int number, const KorString& first, const KorString& second, const KorString& third) {
    addOnce({number, {first, second, third}});
}

std::vector<KorString> KorHostReport::take() {
    Prompts::language(); // reading the texts can report too
    std::vector<KorString> sentences;
    for (const Entry& entry : std::exchange(EditorSession::currentPart<WaitingReport>().entries, {}))
        sentences.push_back(sentenceOf(entry));
    return sentences;
}
