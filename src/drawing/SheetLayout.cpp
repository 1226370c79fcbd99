#include "drawing/SheetLayout.h"

#include "base/Translation.h"
#include "drawing/CutMarks.h"
#include "drawing/Titles.h"

namespace {

constexpr double kFarthest = 1e6; // mm that a view may stand away from the main one

Box2 moved(Box2 box, Vec2 by) {
    box.low = box.low + by;
    box.high = box.high + by;
    return box;
}

bool looksAlike(const ViewPicture& a, const ViewPicture& b) {
    return a.key == b.key && a.name == b.name && a.scale == b.scale && a.letter == b.letter &&
           a.primitives == b.primitives;
}

bool isBeyond(const Primitive& primitive) {
    return !primitive.isOnSheet();
}

Primitive frameAbout(DrawingContext& context, const StructDetViewArrangeStrategy& strategy, const Box2& box) {
    const Vec2 margin = {strategy.frameMargin, strategy.frameMargin};
    const Vec2 low = box.low - margin;
    const Vec2 high = box.high + margin;
    Primitive frame;
    frame.purpose = Primitive::kFrame;
    frame.points = {low, {high.u, low.v}, high, {low.u, high.v}, low};
    frame.pen = context.pens.thin();
    frame.provenance = strategy.key > 0 ? nearer(context.rows.step(strategy, {"frame_margin"}), context.chain)
                                        : context.chain;
    return frame;
}

} // namespace

ViewPicture SheetLayout::Laid::picture() const {
    ViewPicture all = view->picture;
    all.letter = titled.letter;
    all.primitives.insert(all.primitives.end(), titled.primitives.begin(), titled.primitives.end());
    moveAll(all.primitives, moved);
    all.box = ::moved(titled.box, moved);
    return all;
}

void SheetLayout::lay(DrawingContext& context, const Views& views, Drawing& drawing) {
    static const StructDetViewArrangeStrategy kPlain;
    const auto* wanted = context.rows.row<StructDetViewArrangeStrategy>(context.style.arrangeStrategyKey);
    const StructDetViewArrangeStrategy& strategy = wanted ? *wanted : kPlain;
    std::vector<ViewPicture> titled;
    std::vector<ArrangedView> places;
    for (const auto& view : views) {
        const ViewPicture& p = view->picture;
        titled.push_back({p.key, p.name, p.scale, p.isCut, p.letter, view->written, p.box, p.place});
        places.push_back(view->place);
    }
    drawing.sheet.clear();
    std::vector<Laid> laid;
    std::vector<ViewPicture> pictures;
    m_changed.assign(views.size(), true);
    if (!views.empty()) {
        const auto found = std::ranges::find(places, 0, &ArrangedView::direction);
        const auto mainView = static_cast<std::size_t>(found == places.end() ? 0 : found - places.begin());
        addCutViewTitles(context, titled);
        addCutMarks(context, titled, mainView);
        addTitleAboveMainView(context, titled[mainView]);
        for (std::size_t i = 0; i < views.size(); ++i) {
            Primitives& added = titled[i].primitives;
            added.erase(added.begin(), added.begin() + static_cast<std::ptrdiff_t>(views[i]->written.size()));
            if (std::erase_if(added, isBeyond) > 0) {
                titled[i].box = boxOf(added);
                titled[i].box.add(views[i]->picture.box);
            }
            places[i].box = titled[i].box;
        }
        arrangeViews(places, strategy);
        for (ArrangedView& place : places)
            if (!(place.moved.length() < kFarthest)) {
                place.moved = {};
                context.rows.note(
                    translated("The arrangement leads beyond any sheet, so some views stand upon "
                               "each other."));
            }
        Box2 all;
        for (std::size_t i = 0; i < views.size(); ++i) {
            laid.push_back({views[i], std::move(titled[i]), places[i].moved});
            const bool stands = i < m_laid.size() && laid[i] == m_laid[i];
            pictures.push_back(stands ? std::move(drawing.views[i]) : laid[i].picture());
            m_changed[i] = !stands && (i >= m_laid.size() || !looksAlike(pictures[i], drawing.views[i]));
            all.add(pictures[i].box);
        }
        drawing.sheet = titleAbout(context, pictures[mainView], all);
        Box2 box = boxOf(drawing.sheet);
        box.add(all);
        drawing.sheet.push_back(frameAbout(context, strategy, box));
        std::erase_if(drawing.sheet, isBeyond);
    }
    drawing.views = std::move(pictures);
    m_laid = std::move(laid);
}
