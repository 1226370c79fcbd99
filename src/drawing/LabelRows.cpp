#include "drawing/LabelRows.h"

namespace {

enum eSide { kNearest, kLeft, kRight, kAbove, kBelow };

} // namespace

// How far a label in a row or column on that side would be from the anchor.
double LabelRows::away(Vec2 p, int side) const {
    return side == kLeft    ? p.u - m_view.low.u
           : side == kRight ? m_view.high.u - p.u
           : side == kBelow ? p.v - m_view.low.v
                            : m_view.high.v - p.v;
}

bool LabelRows::takes(const Label& label) const {
    if (!label.control || label.control->newArranger == 0)
        return false;
    if (!label.leader)
        return true;
    const double distance = std::clamp(label.control->distance, 0.0, 1000.0);
    return away(label.anchor, sideOf(label)) + distance <= std::max(label.control->maxLeaderLength, distance);
}

std::vector<LabelRows::Place> LabelRows::lineUp(std::vector<Label>& labels, LabelPlacing& placing) const {
    std::map<int, std::vector<Label*>> sides;
    for (Label& label : labels)
        if (takes(label))
            sides[sideOf(label)].push_back(&label);
    std::vector<Place> places;
    for (auto& [side, inRow] : sides) {
        const bool isRow = side == kAbove || side == kBelow;
        std::ranges::stable_sort(inRow, {},
                                 [&](const Label* l) { return isRow ? l->anchor.u : -l->anchor.v; });
        double next = -1e300;
        for (Label* label : inRow) {
            const double length = isRow ? label->size.u : label->size.v;
            const double wantedAt = (isRow ? label->anchor.u : -label->anchor.v) - length / 2;
            double at = std::max(next, wantedAt);
            constexpr double kStep = 2;
            for (int tries = 0; tries < 60 && placing.coversLabel(boxOn(*label, side, at)); ++tries)
                at += kStep;
            next = at + length + std::clamp(label->order ? label->order->spacing : 5.0, 0.0, 1000.0);
            const Vec2 middle = besides(*label, side, at + length / 2);
            if (label->leader) {
                label->anchor = placing.bestAnchor(label->leaderShape(), middle, label->size, label->anchors);
                placing.takeLeader(middle, label->anchor);
            }
            placing.take(middle, label->size);
            places.push_back({label, middle});
        }
    }
    return places;
}
// The box of a label whose beginning stands there along its row or column.

Box2 LabelRows::boxOn(const Label& label, int side, double at) const {
    const bool isRow = side == kAbove || side == kBelow;
    const Vec2 middle = besides(label, side, at + (isRow ? label.size.u : label.size.v) / 2);
    Box2 box;
    box.add(middle - label.size * 0.5);
    box.add(middle + label.size * 0.5);
    return box;
}

// Where nothing is wanted, the side that is nearest to what the label points to.
int LabelRows::sideOf(const Label& label) const {
    const int wanted = label.control->sidePreference;
    const int direction = label.order ? label.order->direction : 0;
    const bool isRow = wanted == kAbove || wanted == kBelow;
    if (wanted != kNearest && (direction == 0 || isRow == (direction == 1)))
        return wanted;
    std::vector<int> sides = {kAbove, kBelow, kLeft, kRight};
    if (direction == 1)
        sides = {kAbove, kBelow};
    else if (direction == 2)
        sides = {kLeft, kRight};
    return *std::ranges::min_element(sides, {}, [&](int side) { return away(label.anchor, side); });
}

Vec2 LabelRows::outermost(const Label& label) const {
    Label tried = label;
    return *std::ranges::min_element(label.anchors, {}, [&](Vec2 anchor) {
        tried.anchor = anchor;
        return away(anchor, sideOf(tried));
    });
}

// Beside the view, or beside the part where the labels follow that.
Vec2 LabelRows::besides(const Label& label, int side, double along) const {
    const Box2& box = label.order && label.order->alignToView != 0 ? m_view : m_part;
    const double distance = std::clamp(label.control->distance, 0.0, 1000.0);
    const double up = label.kind() == kLevelMark ? label.size.v / 2 + 0.6 : 0;
    switch (side) {
    case kLeft:
        return {box.low.u - distance - label.size.u / 2, up - along};
    case kRight:
        return {box.high.u + distance + label.size.u / 2, up - along};
    case kBelow:
        return {along, box.low.v - distance - label.size.v / 2};
    default:
        return {along, box.high.v + distance + label.size.v / 2};
    }
}
