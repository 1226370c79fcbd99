#include "drawing/LineCover.h"

#include <array>
#include <map>

namespace {

struct Placed {
    const ViewLine* line;
    Vec2 direction;
    double from; ///< along the direction
    double to;
};

using Key = std::array<long, 3>;

Placed placed(const ViewLine& line, Key& key) {
    Vec2 d = (line.b - line.a) * (1 / (line.b - line.a).length());
    if (d.u < -1e-6 || (std::abs(d.u) <= 1e-6 && d.v < 0))
        d = d * -1;
    const double offset = cross(d, line.a);
    key = {std::lround(d.u * 2000 + 0.237), std::lround(d.v * 2000 + 0.237),
           std::lround(offset * 20 + 0.237)};
    const double a = line.a.u * d.u + line.a.v * d.v;
    const double b = line.b.u * d.u + line.b.v * d.v;
    return {&line, d, std::min(a, b), std::max(a, b)};
}

// Takes what is covered already out of the stretch, and covers it. Returns the rest.
std::vector<std::pair<double, double>> uncovered(double from, double to,
                                                 std::vector<std::pair<double, double>>& covered) {
    std::vector<std::pair<double, double>> rest;
    double at = from;
    for (const auto& [low, high] : covered) {
        if (high <= at || low >= to)
            continue;
        if (low > at)
            rest.emplace_back(at, low);
        at = std::max(at, high);
    }
    if (at < to)
        rest.emplace_back(at, to);
    covered.insert(std::ranges::upper_bound(covered, std::pair(from, to)), {from, to});
    return rest;
}

} // namespace

std::vector<ViewLine> withoutCovered(std::vector<ViewLine> lines) {
    std::ranges::stable_sort(lines, [](const ViewLine& a, const ViewLine& b) {
        return a.visible != b.visible ? a.visible : a.depth < b.depth - 1e-6;
    });
    std::map<Key, std::vector<std::pair<double, double>>> covered;
    std::vector<ViewLine> kept;
    for (const ViewLine& line : lines) {
        Key key;
        const Placed place = placed(line, key);
        const bool forward =
            (line.b.u - line.a.u) * place.direction.u + (line.b.v - line.a.v) * place.direction.v > 0;
        const Vec2 foot = line.a - place.direction * (forward ? place.from : place.to);
        for (const auto& [from, to] : uncovered(place.from, place.to, covered[key])) {
            if (to - from < 5e-3)
                continue;
            ViewLine piece = line;
            piece.a = foot + place.direction * from;
            piece.b = foot + place.direction * to;
            kept.push_back(piece);
        }
    }
    return kept;
}
