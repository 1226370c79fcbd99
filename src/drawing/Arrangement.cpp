#include "drawing/Arrangement.h"

namespace {

enum eSide { kMain, kRight, kLeft, kAbove, kBelow, kOwnRow, kFreePlace };

// Where the projection puts a view beside the main one.
int sideByProjection(const ArrangedView& main, const ArrangedView& view, bool thirdAngle) {
    const Vec3 away = cross(view.up, view.right);
    const double right = dot(away, main.right);
    const double up = dot(away, main.up);
    if (std::abs(right) > 0.9) // it looks to the right: it is the view from the left
        return (right > 0) == thirdAngle ? kLeft : kRight;
    if (std::abs(up) > 0.9)
        return (up > 0) == thirdAngle ? kBelow : kAbove;
    return kOwnRow;
}

class Sheet {
public:
    Sheet(const StructDetViewArrangeStrategy& strategy, const Box2& main)
        : m_strategy(strategy), m_main(main) {
        m_all = main;
        m_taken = {main};
    }

    void place(ArrangedView& view, int side) {
        const double row = m_strategy.rowSpacing;
        const double column = m_strategy.columnSpacing;
        const bool aligned = m_strategy.alignViews != 0;
        const Vec2 centred = m_main.middle() - view.box.middle();
        const Vec2 level = aligned ? Vec2{} : centred;
        switch (side) {
        case kRight:
            view.moved = {m_all.high.u + column - view.box.low.u, level.v};
            break;
        case kLeft:
            view.moved = {m_all.low.u - column - view.box.high.u, level.v};
            break;
        case kAbove:
            view.moved = {level.u, m_above + row - view.box.low.v};
            break;
        case kBelow:
            view.moved = {level.u, m_below - row - view.box.high.v};
            break;
        case kFreePlace:
            view.moved = freePlace(view.box);
            break;
        default:
            view.moved = {m_all.low.u - view.box.low.u, m_all.low.v - row - view.box.high.v};
        }
        take(view, side);
    }

    // Sections above each other, at the right of all.
    void stack(const std::vector<ArrangedView*>& sections) {
        double v = m_all.high.v;
        const double u = m_all.high.u + m_strategy.columnSpacing;
        for (ArrangedView* view : sections) {
            view->moved = {u - view->box.low.u, v - view->box.high.v};
            v -= view->box.height() + m_strategy.rowSpacing;
            take(*view, kFreePlace);
        }
    }

    // In a row, below all.
    void row(const std::vector<ArrangedView*>& views) {
        double u = m_all.low.u;
        const double v = m_all.low.v - m_strategy.rowSpacing;
        for (ArrangedView* view : views) {
            view->moved = {u - view->box.low.u, v - view->box.high.v};
            u += view->box.width() + m_strategy.columnSpacing;
            take(*view, kOwnRow);
        }
    }

private:
    // Beside or below something that stands already, where the drawing grows least.
    Vec2 freePlace(const Box2& box) const {
        const Vec2 apart = {m_strategy.columnSpacing, m_strategy.rowSpacing};
        Vec2 best = {m_all.high.u + apart.u - box.low.u, m_all.high.v - box.high.v};
        double least = grownArea(box, best);
        std::vector<Box2> beside = m_taken;
        beside.push_back(m_all);
        for (const Box2& other : beside)
            for (const Vec2 corner :
                 {Vec2{other.high.u + apart.u, other.high.v}, Vec2{other.low.u, other.low.v - apart.v},
                  Vec2{other.high.u + apart.u, m_all.high.v}, Vec2{m_all.low.u, other.low.v - apart.v}}) {
                const Vec2 moved = corner - Vec2{box.low.u, box.high.v};
                if (const double area = grownArea(box, moved);
                    area < least - 1e-6 && isFree(box, moved, apart)) {
                    least = area;
                    best = moved;
                }
            }
        return best;
    }
    double grownArea(const Box2& box, Vec2 moved) const {
        Box2 all = m_all;
        all.add(box.low + moved);
        all.add(box.high + moved);
        return all.width() * all.height();
    }
    bool isFree(const Box2& box, Vec2 moved, Vec2 apart) const {
        const Vec2 low = box.low + moved - apart * 0.99;
        const Vec2 high = box.high + moved + apart * 0.99;
        return std::ranges::none_of(m_taken, [&](const Box2& other) {
            return other.low.u < high.u && low.u < other.high.u && other.low.v < high.v &&
                   low.v < other.high.v;
        });
    }

    void take(const ArrangedView& view, int side) {
        Box2 box = view.box;
        box.low = box.low + view.moved;
        box.high = box.high + view.moved;
        m_all.add(box);
        m_taken.push_back(box);
        if (side == kAbove)
            m_above = box.high.v;
        if (side == kBelow)
            m_below = box.low.v;
    }

    const StructDetViewArrangeStrategy& m_strategy;
    Box2 m_main;
    Box2 m_all;
    std::vector<Box2> m_taken;
    double m_above = m_main.high.v;
    double m_below = m_main.low.v;
};

} // namespace

bool isPlacedByProjection(int direction) {
    return direction < kMain || direction > kFreePlace;
}

void arrangeViews(std::vector<ArrangedView>& views, const StructDetViewArrangeStrategy& strategy) {
    if (views.empty())
        return;
    auto main = std::ranges::find(views, static_cast<int>(kMain), &ArrangedView::direction);
    if (main == views.end())
        main = views.begin();
    Sheet sheet(strategy, main->box);
    std::vector<ArrangedView*> beside;
    std::vector<ArrangedView*> rows;
    std::vector<ArrangedView*> free;
    for (ArrangedView& view : views) {
        if (&view == &*main)
            continue;
        int side = view.direction;
        if (side == kMain || isPlacedByProjection(side))
            side = sideByProjection(*main, view, strategy.projection == 1);
        view.direction = side;
        const bool stacks = strategy.stackSections != 0 && view.isSection && side != kFreePlace;
        if (stacks || side == kOwnRow)
            rows.push_back(&view);
        else if (side == kFreePlace)
            free.push_back(&view);
        else
            beside.push_back(&view);
    }
    // What stands above and below may be wider than the main view: what stands beside keeps clear of it.
    std::ranges::stable_partition(beside, [](const ArrangedView* v) { return v->direction >= kAbove; });
    for (ArrangedView* view : beside)
        sheet.place(*view, view->direction);
    if (strategy.stackSections != 0)
        sheet.stack(rows);
    else
        sheet.row(rows);
    for (ArrangedView* view : free)
        sheet.place(*view, kFreePlace);
}
