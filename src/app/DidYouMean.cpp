#include "app/DidYouMean.h"

#include "base/SimilarWord.h"
#include "base/Translation.h"

KorString didYouMean(const KorString& word, const std::vector<KorString>& candidates) {
    const KorString similar = similarWord(word, candidates);
    return similar.isEmpty()
               ? KorString()
               : KorString(" ") + KorString::format(translated("Did you mean \"%s\"?"), {similar});
}
