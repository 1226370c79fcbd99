#include "base/SimilarWord.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

using Row = std::vector<std::size_t>;

// How many letters have to be put in, taken out, replaced or exchanged with their neighbour; from `limit` on
// only that it is no less.
std::size_t distance(std::wstring_view a, std::wstring_view b, std::size_t limit) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) >= limit)
        return limit;
    Row before(b.size() + 1);
    Row above(b.size() + 1);
    Row row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        above[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        if (std::ranges::min(row) >= limit)
            return limit;
        std::swap(before, above);
        std::swap(above, row);
    }
    return above[b.size()];
}

} // namespace

KorString similarWord(const KorString& word, const std::vector<KorString>& candidates) {
    constexpr std::size_t kLongest = 200; // what is longer is no slip of the finger
    const std::wstring wanted = word.lowered().toWide();
    std::size_t least = std::min(wanted.size(), kLongest) / 3 + 1;
    KorString similar;
    if (wanted.size() > kLongest)
        return similar;
    for (const KorString& candidate : candidates) {
        const std::wstring text = candidate.lowered().toWide();
        if (const std::size_t differs = distance(wanted, text, least); differs < least) {
            least = differs;
            similar = candidate;
        }
    }
    return similar;
}
