#include "drawing/LabelPlacing.h"

#include <array>

namespace {

Box2 boxAt(Vec2 middle, Vec2 size) {
    Box2 box;
    box.add(middle - size * 0.5);
    box.add(middle + size * 0.5);
    return box;
}

bool meet(const Box2& a, const Box2& b) {
    return a.low.u < b.high.u && b.low.u < a.high.u && a.low.v < b.high.v && b.low.v < a.high.v;
}

// The directions in which a place is sought, the preferred side first.
std::array<Vec2, 8> directions(int side) {
    constexpr double d = 0.7071;
    switch (side) {
    case 1:
        return {{{-1, 0}, {-d, d}, {-d, -d}, {0, 1}, {0, -1}, {d, d}, {d, -d}, {1, 0}}};
    case 2:
        return {{{1, 0}, {d, d}, {d, -d}, {0, 1}, {0, -1}, {-d, d}, {-d, -d}, {-1, 0}}};
    case 4:
        return {{{0, -1}, {d, -d}, {-d, -d}, {1, 0}, {-1, 0}, {d, d}, {-d, d}, {0, 1}}};
    case 3:
        return {{{0, 1}, {d, d}, {-d, d}, {1, 0}, {-1, 0}, {d, -d}, {-d, -d}, {0, -1}}};
    default:
        return {{{d, d}, {-d, d}, {d, -d}, {-d, -d}, {0, 1}, {0, -1}, {1, 0}, {-1, 0}}};
    }
}

} // namespace

LabelPlacing::LabelPlacing(const Primitives& lines) {
    for (const Primitive& primitive : lines) {
        if (primitive.kind == Primitive::kText)
            m_taken.push_back(primitive.box());
        if (primitive.kind == Primitive::kLine && primitive.purpose != Primitive::kHatch)
            for (std::size_t i = 1; i < primitive.points.size(); ++i)
                m_lines.emplace_back(primitive.points[i - 1], primitive.points[i]);
    }
}

Vec2 LabelPlacing::place(const WantedLabel& label) {
    const auto at = [&](Vec2 direction, double distance) {
        return label.anchor +
               Vec2{direction.u * (distance + label.size.u / 2), direction.v * (distance + label.size.v / 2)};
    };
    const std::array<Vec2, 8> tried = directions(label.side);
    constexpr double kStep = 4;
    Vec2 found = at(tried[0], label.distance);
    bool isClear = false;
    for (const bool covers : {false, true}) {
        for (double distance = label.distance; distance <= label.farthest && !isClear; distance += kStep)
            for (const Vec2 direction : tried) {
                const Box2 box = boxAt(at(direction, distance), label.size);
                if (coversLabel(box) || (!covers && !label.mayCover && coversLine(box)))
                    continue;
                found = at(direction, distance);
                isClear = true;
                break;
            }
        if (isClear)
            break;
    }
    take(found, label.size);
    return found;
}

void LabelPlacing::take(Vec2 middle, Vec2 size) {
    m_taken.push_back(boxAt(middle, size + Vec2{1, 1}));
}

bool LabelPlacing::coversLabel(const Box2& box) const {
    return std::ranges::any_of(m_taken, [&](const Box2& other) { return meet(box, other); });
}

bool LabelPlacing::coversLine(const Box2& box) const {
    const Vec2 corners[] = {box.low, {box.high.u, box.low.v}, box.high, {box.low.u, box.high.v}};
    return std::ranges::any_of(m_lines, [&](const std::pair<Vec2, Vec2>& line) {
        Box2 around;
        around.add(line.first);
        around.add(line.second);
        if (around.low.u > box.high.u || around.high.u < box.low.u || around.low.v > box.high.v ||
            around.high.v < box.low.v)
            return false;
        const auto inside = [&](Vec2 p) {
            return p.u >= box.low.u && p.u <= box.high.u && p.v >= box.low.v && p.v <= box.high.v;
        };
        if (inside(line.first) || inside(line.second))
            return true;
        for (int i = 0; i < 4; ++i)
            if (crossing(line.first, line.second, corners[i], corners[(i + 1) % 4]) >= 0)
                return true;
        return false;
    });
}
