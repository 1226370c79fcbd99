#include "drawing/DimensionTexts.h"

namespace {

constexpr double kClear = 0.4; // mm between texts

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
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

void DimensionTexts::avoid(const std::vector<std::pair<Vec2, Vec2>>& lines) {
    constexpr double kStroke = 3.5;    // mm, the mark at the end of a stretch
    constexpr std::size_t kMost = 400; // where there are more no place is without
    for (const auto& [a, b] : lines)
        if (const double length = (b - a).length(); length > kStroke && m_lines.size() < kMost)
            m_lines.push_back({(a + b) * 0.5, (b - a) * (1 / length), {length / 2, 0}});
}

void DimensionTexts::take(Vec2 middle, Vec2 direction, Vec2 size) {
    m_taken.push_back({middle, direction, size * 0.5 + Vec2{kClear, kClear} * 0.5});
}

DimensionTexts::Place DimensionTexts::place(const Span& span, Vec2 size) {
    const double length = (span.to - span.from).length();
    const Vec2 d = length > 1e-9 ? (span.to - span.from) * (1 / length) : Vec2{1, 0};
    const Vec2 middle = (span.from + span.to) * 0.5;
    const double upon = size.v * 0.8; // from the line to the middle of a text
    const double beside = length / 2 + size.u / 2 + 2;
    struct Try {
        double along;
        double outward;
        bool led;
    };
    std::vector<Try> tries;
    const double room = (length - 0.6 - size.u) / 2;
    if (room >= 0)
        for (const double part : {0.0, 0.25, -0.25, 0.5, -0.5, 0.75, -0.75, 1.0, -1.0})
            tries.push_back({part * room, -upon, false});
    const auto isUpon = [&](const Try& t) { return !t.led && std::abs(t.along) <= room && t.outward < 0; };
    if (span.isFirst)
        tries.push_back({-beside, -upon, false});
    if (span.isLast)
        tries.push_back({beside, -upon, false});
    tries.push_back({0, upon, false});
    for (const double row : {upon, upon + size.v * 1.35, -upon - size.v * 1.35, -upon - size.v * 2.7})
        for (const double shift : {0.7, -0.7, 1.4, -1.4, 2.2, -2.2})
            tries.push_back({shift * (size.u / 2 + 1.5), row, true});
    const auto at = [&](const Try& t) { return middle + d * t.along + span.outward * t.outward; };
    const Vec2 half = size * 0.5;
    const auto isGood = [&](const Try& t) { return isFree({at(t), d, half}); };
    auto found = std::ranges::find_if(tries, [&](const Try& t) {
        return isUpon(t) && isGood(t) && !isCrossed({at(t), d, half});
    });
    if (found == tries.end())
        found = std::ranges::find_if(tries, isGood);
    const Try& chosen = found == tries.end() ? tries.front() : *found;
    Place place{at(chosen), {}};
    if (chosen.led) {
        const double near = chosen.outward > 0 ? -size.v * 0.7 : size.v * 0.7;
        place.leader = {middle, place.middle + span.outward * near};
    } else if (!isUpon(chosen) && chosen.along != 0) {
        const Vec2 end = chosen.along < 0 ? span.from : span.to;
        place.leader = {end, end + d * (chosen.along < 0 ? -size.u - 3 : size.u + 3)};
    }
    take(place.middle, d, size);
    return place;
}
