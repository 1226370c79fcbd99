#include "drawing/LabelFigures.h"

#include "drawing/Figures.h"

void LabelFigures::line(const Label& label, std::vector<Vec2> points) {
    all.push_back(Figures::line(std::move(points), m_pen, Primitive::kLabel, label.provenance, label.object));
}

void LabelFigures::add(Label& label, Vec2 middle, bool isOnSite) {
    addLeader(label, middle);
    moveAll(label.texts, middle);
    all.insert(all.end(), label.texts.begin(), label.texts.end());
    const Vec2 low = middle - label.size * 0.5;
    const Vec2 high = middle + label.size * 0.5;
    const int frame = label.frame();
    if (frame == kBoxFrame)
        line(label, {low, {high.u, low.v}, high, {low.u, high.v}, low});
    if (frame == kCircleFrame)
        all.push_back(Figures::circle(middle, label.size.u / 2, m_pen, Primitive::kLabel, label.provenance,
                                      label.object));
    const int kind = label.kind();
    if (kind == kWeldSymbol) // a fillet weld on its reference line
        line(label, {{low.u, low.v - 0.6},
                     {high.u, low.v - 0.6},
                     {low.u + 3, low.v - 0.6},
                     {low.u, low.v + 2.4},
                     {low.u, low.v - 0.6}});
    if (kind == kWeldSymbol && isOnSite) {
        const Vec2 foot = {label.anchor.u > middle.u ? high.u : low.u, low.v - 0.6};
        line(label, {foot, foot + Vec2{0, 6}});
        line(label, {foot + Vec2{0, 6}, foot + Vec2{-3, 5}, foot + Vec2{0, 4}});
        all.back().kind = Primitive::kFill;
    }
    const bool isOnLine = kind == kLevelMark || kind == kHoleMark || kind == kBoltMark ||
                          (kind == kPartMark && frame == kNoFrame && label.leader);
    if (isOnLine)
        line(label, {{low.u, low.v - 0.6}, {high.u, low.v - 0.6}});
}

void LabelFigures::addLeader(const Label& label, Vec2 middle) {
    const std::vector<Vec2> way =
        label.leader ? leaderWay(label.leaderShape(), middle, label.size, label.anchor) : std::vector<Vec2>();
    if (way.empty())
        return;
    line(label, way);
    const Vec2 end = way.back();
    const Vec2 d = end - way[1];
    const double size = std::clamp(label.leader->arrowSize, 0.0, 50.0);
    const Vec2 back = d * (-size / d.length());
    const Vec2 side = Vec2{-back.v, back.u} * 0.2;
    if (label.leader->arrow == 1) {
        line(label, {end, end + back + side, end + back - side});
        all.back().kind = Primitive::kFill;
    } else if (label.leader->arrow == 2) {
        line(label, {end + back + side, end, end + back - side});
    } else if (label.leader->arrow == 3) {
        const Loop2 dot = Outline::circle(end, size / 2).corners;
        line(label, dot);
        all.back().kind = Primitive::kFill;
    }
}
