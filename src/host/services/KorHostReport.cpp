#include "services/KorHostReport.h"

#include "base/EditorSession.h"

#include <algorithm>
#include <utility>

std::vector<KorHostReport::Entry>& KorHostReport::entries() {
    struct WaitingReport {
        std::vector<Entry> entries;
    };
    return EditorSession::currentPart<WaitingReport>().entries;
}

void KorHostReport::addOnce(Entry entry) {
    if (std::ranges::find(entries(), entry) == entries().end())
        entries().push_back(std::move(entry));
}

void KorHostReport::add(const KorString& sentence) {
    addOnce({0, {sentence}});
}

void KorHostReport::add(int number, const KorString& first, const KorString& second, const KorString& third) {
    addOnce({number, {first, second, third}});
}
