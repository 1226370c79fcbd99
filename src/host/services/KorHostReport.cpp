#include "services/KorHostReport.h"

#include <algorithm>
#include <utility>

namespace {
std::vector<KorString> g_sentences;
}

void KorHostReport::add(const KorString& sentence) {
    if (std::ranges::find(g_sentences, sentence) == g_sentences.end())
        g_sentences.push_back(sentence);
}

std::vector<KorString> KorHostReport::take() {
    return std::exchange(g_sentences, {});
}
