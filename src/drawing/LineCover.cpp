#include "drawing/LineCover.h"

#include <array>
#include <unordered_map>

namespace {

struct Placed {
    const ViewLine* line;
    Vec2 direction;
    double from; ///< along the direction
    double to;
};

using Key = std::array<long, 3>; // of the straight line that it lies on

struct KeyHash {
    std::size_t operator()(const Key& key) const {
        std::uint64_t hash = 0;
        for (const long part : key)
            hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15ULL;
        return hash ^ hash >> 32;
    }
};

Placed placed(const ViewLine& line, Key& key) {
    Vec2 d = line.b - line.a;
    d = d * (1 / d.length());
    if (d.u < -1e-6 || (std::abs(d.u) <= 1e-6 && d.v < 0))
        d = d * -1;
    const double offset = cross(d, line.a);
    key = {std::lround(d.u * 2000 + 0.237), std::lround(d.v * 2000 + 0.237),
           std::lround(offset * 20 + 0.237)};
    const double a = line.a.u * d.u + line.a.v * d.v;
    const double b = line.b.u * d.u + line.b.v * d.v;
    return {&line, d, std::min(a, b), std::max(a, b)};
}

using Stretch = std::pair<double, double>;

// Covers the stretch of a line whose covered ones are apart from each other, and ascending. Gives `take` what
// was not covered yet.
template <typename Take>
void cover(const Stretch& stretch, std::vector<Stretch>& covered, const Take& take) {
    const auto first = std::ranges::upper_bound(covered, stretch.first, {}, &Stretch::second);
    Stretch all = stretch;
    double at = stretch.first;
    auto last = first;
    for (; last != covered.end() && last->first < stretch.second; ++last) {
        if (last->first > at)
            take(at, last->first);
        at = std::max(at, last->second);
        all = {std::min(all.first, last->first), std::max(all.second, last->second)};
    }
    if (at < stretch.second)
        take(at, stretch.second);
    if (first == last) {
        covered.insert(first, all);
    } else {
        *first = all;
        covered.erase(first + 1, last);
    }
}

} // namespace

std::vector<ViewLine> withoutCovered(const std::vector<ViewLine>& lines) {
    std::vector<const ViewLine*> nearest;
    nearest.reserve(lines.size());
    for (const ViewLine& line : lines)
        nearest.push_back(&line);
    std::ranges::stable_sort(nearest, [](const ViewLine* a, const ViewLine* b) {
        return a->visible != b->visible ? a->visible : a->depth < b->depth - 1e-6;
    });
    // Most lines lie on a straight line of their own.
    struct Straight {
        std::size_t lines = 0;
        std::vector<Stretch> covered;
    };
    std::unordered_map<Key, Straight, KeyHash> straights;
    straights.reserve(lines.size());
    std::vector<std::pair<Placed, Straight*>> places;
    places.reserve(lines.size());
    for (const ViewLine* line : nearest) {
        Key key;
        const Placed place = placed(*line, key);
        Straight& straight = straights[key];
        ++straight.lines;
        places.emplace_back(place, &straight);
    }
    std::vector<ViewLine> kept;
    kept.reserve(lines.size());
    for (const auto& [place, straight] : places) {
        const ViewLine& line = *place.line;
        const bool forward =
            (line.b.u - line.a.u) * place.direction.u + (line.b.v - line.a.v) * place.direction.v > 0;
        const Vec2 foot = line.a - place.direction * (forward ? place.from : place.to);
        const auto keep = [&, &at = place](double from, double to) {
            if (to - from < 5e-3)
                return;
            ViewLine piece = line;
            piece.a = foot + at.direction * from;
            piece.b = foot + at.direction * to;
            kept.push_back(piece);
        };
        if (straight->lines == 1)
            keep(place.from, place.to);
        else
            cover({place.from, place.to}, straight->covered, keep);
    }
    return kept;
}
