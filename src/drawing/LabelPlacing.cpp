#include "drawing/LabelPlacing.h"

#include <array>

namespace {

constexpr double kCoversLine = 30; // costs, as millimetres of a longer leader
constexpr double kTouchesLine = 5;
constexpr double kClearOfLine = 0.5; // mm
constexpr double kLeaderThroughLabel = 60;
constexpr double kLeaderThroughLeader = 40;
constexpr double kLeaderThroughLine = 2.5;
constexpr std::size_t kLeaderEffort = 3; // of a line that may be crossed, as that of one that may be covered

Box2 boxAt(Vec2 middle, Vec2 size) {
    Box2 box;
    box.add(middle - size * 0.5);
    box.add(middle + size * 0.5);
    return box;
}

bool meet(const Box2& a, const Box2& b) {
    return a.low.u < b.high.u && b.low.u < a.high.u && a.low.v < b.high.v && b.low.v < a.high.v;
}

bool meets(const std::pair<Vec2, Vec2>& line, const Box2& box) {
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
    const Vec2 corners[] = {box.low, {box.high.u, box.low.v}, box.high, {box.low.u, box.high.v}};
    for (int i = 0; i < 4; ++i)
        if (crossing(line.first, line.second, corners[i], corners[(i + 1) % 4]) >= 0)
            return true;
    return false;
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
        if (primitive.kind == Primitive::kArc) {
            const Vec2 reach = {primitive.radius, 0};
            m_lines.emplace_back(primitive.points[0] - reach, primitive.points[0] + reach);
        }
    }
}

LabelPlacing::Place LabelPlacing::place(const WantedLabel& label) {
    const std::array<Vec2, 8> tried = directions(label.side);
    constexpr double kStep = 4;
    constexpr double kLessWanted = 1.5; // of each further direction, and each further anchor
    constexpr double kNever = 1e9;
    const auto at = [&](Vec2 anchor, Vec2 d, double distance) {
        return anchor + Vec2{d.u * (distance + label.size.u / 2), d.v * (distance + label.size.v / 2)};
    };
    Place best = {at(label.anchors[0], tried[0], label.distance), label.anchors[0]};
    double least = kNever;
    // Nothing further out costs less than what lies between.
    const auto isWorth = [&](double distance) {
        return distance <= label.farthest && distance - label.distance < least && m_effort < kMostEffort;
    };
    for (double distance = label.distance; isWorth(distance); distance += kStep)
        for (std::size_t i = 0; i < label.anchors.size(); ++i)
            for (std::size_t k = 0; k < tried.size(); ++k) {
                double cost = distance - label.distance +
                              kLessWanted * static_cast<double>(k + (label.side ? 2 * i : i));
                if (cost >= least)
                    continue;
                const Box2 box = boxAt(at(label.anchors[i], tried[k], distance), label.size);
                m_effort += m_taken.size() + m_leaders.size();
                if (coversLabel(box) ||
                    std::ranges::any_of(m_leaders, [&](const Line& leader) { return meets(leader, box); }))
                    continue;
                if (!label.mayCover) {
                    m_effort += 2 * m_lines.size();
                    cost += coversLine(box) ? kCoversLine : coversLine(box, kClearOfLine) ? kTouchesLine : 0;
                }
                if (label.leader && cost < least) {
                    m_effort += kLeaderEffort * (m_taken.size() + m_leaders.size() + m_lines.size());
                    cost += leaderCost(*label.leader, box, label.anchors[i]);
                }
                if (cost < least) {
                    least = cost;
                    best = {box.middle(), label.anchors[i]};
                }
            }
    take(best.middle, label.size);
    if (label.leader)
        m_leaders.emplace_back(best.middle, best.anchor);
    return best;
}

Vec2 LabelPlacing::bestAnchor(const LeaderShape& leader, Vec2 middle, Vec2 size,
                              const std::vector<Vec2>& anchors) const {
    const Box2 box = boxAt(middle, size);
    return *std::ranges::min_element(anchors, {}, [&](Vec2 anchor) {
        return leaderCost(leader, box, anchor) + 0.5 * (anchor - middle).length();
    });
}

void LabelPlacing::take(Vec2 middle, Vec2 size) {
    m_taken.push_back(boxAt(middle, size + Vec2{1, 1}));
}

bool LabelPlacing::coversLabel(const Box2& box) const {
    return std::ranges::any_of(m_taken, [&](const Box2& other) { return meet(box, other); });
}

bool LabelPlacing::coversLine(const Box2& box, double clear) const {
    const Vec2 margin = {clear, clear};
    const Box2 around = {box.low - margin, box.high + margin};
    return std::ranges::any_of(m_lines, [&](const Line& line) { return meets(line, around); });
}

// What a leader from the label crosses on its way to the anchor: texts as it is drawn, lines about as
// straight.
double LabelPlacing::leaderCost(const LeaderShape& leader, const Box2& box, Vec2 anchor) const {
    const std::vector<Vec2> way = leaderWay(leader, box.middle(), {box.width(), box.height()}, anchor);
    const Vec2 edge = {anchor.u > box.middle().u ? box.high.u : box.low.u, box.low.v};
    const auto passes = [&](const Box2& taken) {
        for (std::size_t i = 1; i < way.size(); ++i)
            if (meets({way[i - 1], way[i]}, taken))
                return true;
        return meets({edge, anchor}, taken);
    };
    double cost = 0;
    for (const Box2& taken : m_taken)
        cost += passes(taken) ? kLeaderThroughLabel : 0;
    for (const Line& other : m_leaders)
        cost += crossing(edge, anchor, other.first, other.second) >= 0 ? kLeaderThroughLeader : 0;
    constexpr double kArrived = 0.97; // what is crossed there belongs to the object
    for (const Line& line : m_lines) {
        const double part = crossing(edge, anchor, line.first, line.second);
        cost += part >= 0 && part < kArrived ? kLeaderThroughLine : 0;
    }
    return cost;
}
