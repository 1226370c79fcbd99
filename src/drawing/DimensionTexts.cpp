#include "drawing/DimensionTexts.h"

#include <tuple>

namespace {

constexpr double kClear = 0.4;     // mm between texts
constexpr double kUpon = 0.8;      // of the height of a text, from the line to its middle
constexpr double kOverMarks = 0.6; // mm higher, where the marks at the ends of a stretch would touch it

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

// A stretch, along which places are told from its middle.
struct Way {
    explicit Way(const DimensionTexts::Span& span)
        : length((span.to - span.from).length()),
          d(length > 1e-9 ? (span.to - span.from) * (1 / length) : Vec2{1, 0}),
          middle((span.from + span.to) * 0.5), outward(span.outward) {}
    Vec2 at(double forward, double out) const { return middle + d * forward + outward * out; }

    double length;
    Vec2 d;
    Vec2 middle;
    Vec2 outward;
};

// Where a text can be that is not upon its stretch, the best place first.
std::vector<DimensionTexts::Place> placesBeside(const DimensionTexts::Span& span, Vec2 size) {
    const Way way(span);
    const double up = kUpon * size.v;
    const double below = kDimensionOvershoot + kClear + size.v / 2;
    std::vector<DimensionTexts::Place> places;
    const auto beside = [&](Vec2 end, double side) {
        places.push_back({way.at(side * (way.length / 2 + size.u / 2 + 2), -up),
                          {end, end + way.d * (side * (size.u + 3))}});
    };
    if (span.isFirst)
        beside(span.from, -1);
    if (span.isLast)
        beside(span.to, 1);
    places.push_back({way.at(0, below), {}});
    const double row = size.v * 1.35;
    const auto led = [&](double out, double shift) {
        const Vec2 at = way.at(shift * (size.u / 2 + 1.5), out);
        const double near = size.v * (out > 0 ? -0.7 : 0.7); // its edge
        if (size.v - out < span.room)
            places.push_back({at, {way.middle, at + span.outward * near}});
    };
    const double outs[] = {below, below + row, -up - row, below + 2 * row, -up - 2 * row, below + 3 * row};
    for (const double out : outs)
        for (const double shift : {0.7, -0.7, 1.4, -1.4, 2.2, -2.2, 3.0, -3.0})
            led(out, shift);
    for (const double shift : {3.8, -3.8, 4.6, -4.6, 5.4, -5.4})
        for (const double out : outs)
            led(out, shift);
    return places;
}

} // namespace

// Two rectangles are apart where a side of one of them divides them.
bool DimensionTexts::meet(const Text& a, const Text& b) {
    const Vec2 between = b.middle - a.middle;
    const auto reach = [](const Text& text, Vec2 axis) {
        const Vec2 up = {-text.along.v, text.along.u};
        return text.half.u * std::abs(along(text.along, axis)) + text.half.v * std::abs(along(up, axis));
    };
    for (const Text* text : {&a, &b})
        for (const Vec2 axis : {text->along, Vec2{-text->along.v, text->along.u}})
            if (std::abs(along(between, axis)) >= reach(a, axis) + reach(b, axis))
                return false;
    return true;
}

bool DimensionTexts::isFree(const Text& text) const {
    return std::ranges::none_of(m_taken, [&](const Text& other) { return meet(text, other); });
}

bool DimensionTexts::isCrossed(const Text& text) const {
    return std::ranges::any_of(m_lines, [&](const Text& line) { return meet(text, line); });
}

// Without height.
DimensionTexts::Text DimensionTexts::asText(Vec2 from, Vec2 to) {
    const double length = (to - from).length();
    return {(from + to) * 0.5, length > 1e-9 ? (to - from) * (1 / length) : Vec2{1, 0}, {length / 2, 0}};
}

void DimensionTexts::avoid(const std::vector<std::pair<Vec2, Vec2>>& lines) {
    constexpr std::size_t kMost = 800; // where there are more no place is without
    for (const auto& [a, b] : lines)
        if (m_lines.size() < kMost)
            m_lines.push_back(asText(a, b));
}

void DimensionTexts::take(Vec2 middle, Vec2 direction, Vec2 size) {
    m_taken.push_back({middle, direction, size * 0.5 + Vec2{kClear, kClear} * 0.5});
}

std::optional<DimensionTexts::Place> DimensionTexts::upon(const Span& span, Vec2 size) {
    const Way way(span);
    const double room = (way.length - 0.6 - size.u) / 2;
    if (room < 0)
        return std::nullopt;
    for (const double up : {kUpon * size.v, kUpon * size.v + kOverMarks})
        for (const double part : {0.0, 0.25, -0.25, 0.5, -0.5, 0.75, -0.75, 1.0, -1.0}) {
            const Vec2 at = way.at(part * room, -up);
            if (isFree({at, way.d, size * 0.5}) && !isCrossed({at, way.d, size * 0.5})) {
                take(at, way.d, size);
                return Place{at, {}};
            }
        }
    return std::nullopt;
}

DimensionTexts::Place DimensionTexts::oneOf(const std::vector<Vec2>& middles, Vec2 direction, Vec2 size) {
    const auto text = [&](Vec2 middle) { return Text{middle, direction, size * 0.5}; };
    auto found = std::ranges::find_if(
        middles, [&](Vec2 middle) { return isFree(text(middle)) && !isCrossed(text(middle)); });
    if (found == middles.end())
        found = std::ranges::find_if(middles, [&](Vec2 middle) { return isFree(text(middle)); });
    const Vec2 chosen = found == middles.end() ? middles.front() : *found;
    take(chosen, direction, size);
    return {chosen, {}};
}

bool DimensionTexts::isLed(const std::vector<Vec2>& leader) const {
    return leader.empty() ||
           (isFree(asText(leader[0], leader[1])) && std::ranges::none_of(m_leaders, [&](const auto& other) {
                return crossing(leader[0], leader[1], other.first, other.second) >= 0;
            }));
}

DimensionTexts::Place DimensionTexts::besides(const Span& span, Vec2 size) {
    const std::vector<Place> tries = placesBeside(span, size);
    const Vec2 d = Way(span).d;
    const auto text = [&](const Place& place) { return Text{place.middle, d, size * 0.5}; };
    auto found = std::ranges::find_if(tries, [&](const Place& place) {
        return isFree(text(place)) && !isCrossed(text(place)) && isLed(place.leader);
    });
    if (found == tries.end())
        found = std::ranges::find_if(tries, [&](const Place& place) { return isFree(text(place)); });
    const Place& chosen = found == tries.end() ? tries.front() : *found;
    take(chosen.middle, d, size);
    if (!chosen.leader.empty()) {
        m_lines.push_back(asText(chosen.leader[0], chosen.leader[1]));
        m_leaders.emplace_back(chosen.leader[0], chosen.leader[1]);
    }
    return chosen;
}

// How far each stretch lies from the nearer end of its line.
std::vector<double> DimensionTexts::insides(const std::vector<Wanted>& texts) {
    std::vector<double> insides(texts.size());
    const auto middleOf = [&](std::size_t i) { return (texts[i].span.from + texts[i].span.to) * 0.5; };
    for (std::size_t i = 0, first = 0; i < texts.size(); ++i) {
        first = texts[i].span.isFirst ? i : first;
        insides[i] = (middleOf(i) - texts[first].span.from).length();
    }
    for (std::size_t i = texts.size(), last = texts.size() - 1; i-- > 0;) {
        last = texts[i].span.isLast ? i : last;
        insides[i] = std::min(insides[i], (texts[last].span.to - middleOf(i)).length());
    }
    return insides;
}

std::vector<DimensionTexts::Place> DimensionTexts::place(const std::vector<Wanted>& texts) {
    std::vector<Place> places(texts.size());
    std::vector<std::size_t> rest;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto& [span, size, middles] = texts[i];
        if (!middles.empty())
            places[i] = oneOf(middles, span.outward * -1, size);
        else if (const std::optional<Place> place = upon(span, size))
            places[i] = *place;
        else
            rest.push_back(i);
    }
    const std::vector<double> inside = insides(texts);
    // First those at the ends of lines, which have their place beside these; then the longer ones, which stay
    // nearer; of equal ones those further inside, so that leaders of the others pass them.
    std::ranges::stable_sort(rest, std::greater(), [&](std::size_t i) {
        const Span& span = texts[i].span;
        return std::tuple(span.isFirst || span.isLast, std::lround((span.to - span.from).length() * 100),
                          std::lround(inside[i] * 100));
    });
    for (const std::size_t i : rest)
        places[i] = besides(texts[i].span, texts[i].size);
    return places;
}
