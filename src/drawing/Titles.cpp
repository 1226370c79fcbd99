#include "drawing/Titles.h"

#include "data/text/TextFields.h"
#include "drawing/LabelText.h"

namespace {

constexpr double kApart = 6; // mm between a title and what it belongs to

enum eTitlePosition {
    kNoTitle,
    kLowerLeft,
    kAboveDetail,
    kAboveMainView,
    kBelowDetail,
    kLowerRight,
    kUpperLeft,
    kUpperRight
};

std::string letterOf(std::size_t number) {
    return std::string(1, static_cast<char>('A' + number % 26));
}

// A stored position that there is not counts as the default.
int positionOf(const StructDetailStyle& style) {
    const bool isKnown = style.titlePosition >= kNoTitle && style.titlePosition <= kUpperRight;
    return isKnown ? style.titlePosition : static_cast<int>(kAboveMainView);
}

Primitives detailTitle(DrawingContext& context, const ViewPicture& main) {
    const auto values = [&](const std::string& name) -> std::optional<std::string> {
        if (name == "scale")
            return LabelText::scale(main.scale, context.rows);
        if (name == "view")
            return main.name;
        if (name == "name")
            return context.part.name;
        return labelValue(context, nullptr, name);
    };
    return LabelText::lay(
        context.style.titleFormat, titleStyle(context), values, context.pens.thin(), Primitive::kTitle,
        nearer(context.rows.step(context.style, {"title_format", "title_position"}), context.chain));
}

} // namespace

std::optional<std::string> labelValue(DrawingContext& context, const PartObject* object,
                                      const std::string& name) {
    const SamplePart& part = context.part;
    const PartObject* main = part.main();
    for (const auto* values :
         {object ? &object->values : &part.values, main ? &main->values : &part.values, &part.values}) {
        if (object && values == &main->values && object != main && name != "finish" && name != "material")
            continue; // the mark of a plate is not that of its beam
        if (const auto value = values->find(name); value != values->end())
            return LabelText::withLengths(value->second, context.rows);
    }
    return std::nullopt;
}

LabelStyle titleStyle(DrawingContext& context) {
    LabelStyle style{context.pens.settings().textFont, 5.0, 3};
    const auto rows = context.rows.rows<StructCreationDefault>(
        [](const StructCreationDefault& r) { return r.family == 40; });
    for (const StructCreationDefault* row : rows) {
        double value = 0;
        if (const auto number = TextFields::toReal(row->value.view()))
            value = *number;
        if (row->name == "TitleHeight" && value > 0)
            style.size = value;
        if (row->name == "TitleColor")
            style.color = static_cast<int>(value);
        if (row->name == "TitleBold")
            style.bold = value != 0;
        if (row->name == "TitleItalic")
            style.italic = value != 0;
        if (row->name == "TitleUnderline")
            style.underline = value != 0;
    }
    return style;
}

void addCutViewTitles(DrawingContext& context, std::vector<ViewPicture>& views) {
    std::size_t cuts = 0;
    for (ViewPicture& view : views) {
        if (!view.isCut)
            continue;
        view.letter = letterOf(cuts++);
        const auto* request = context.rows.row<StructDetViewRequest>(view.key);
        if (context.style.cutViewTitleFormat.isEmpty() || !request)
            continue;
        const auto letter = [&](const std::string& name) -> std::optional<std::string> {
            return name == "view" ? std::optional(view.letter) : labelValue(context, nullptr, name);
        };
        const std::string called = request->calloutTitleTemplate.isEmpty()
                                       ? view.letter
                                       : LabelText::plain(request->calloutTitleTemplate, letter);
        const auto values = [&](const std::string& name) -> std::optional<std::string> {
            return name == "view"    ? std::optional(called)
                   : name == "scale" ? std::optional(LabelText::scale(view.scale, context.rows))
                                     : labelValue(context, nullptr, name);
        };
        Primitives title = LabelText::lay(
            context.style.cutViewTitleFormat, titleStyle(context), values, context.pens.thin(),
            Primitive::kTitle,
            nearer(
                context.rows.step(*request, {"used_for_cuts_and_callouts", "callout_title_template"}),
                nearer(context.rows.step(context.style, {"cut_view_title_format", "cut_view_title_position"}),
                       context.chain)));
        const Box2 box = boxOf(title);
        const bool above = context.style.cutViewTitlePosition == 1;
        moveAll(title, {view.box.middle().u - box.middle().u,
                        above ? view.box.high.v + kApart - box.low.v : view.box.low.v - kApart - box.high.v});
        view.primitives.insert(view.primitives.end(), title.begin(), title.end());
        view.box.add(boxOf(title));
    }
}

void addTitleAboveMainView(DrawingContext& context, ViewPicture& main) {
    if (positionOf(context.style) != kAboveMainView)
        return;
    Primitives title = detailTitle(context, main);
    const Box2 box = boxOf(title);
    moveAll(title, {main.box.middle().u - box.middle().u, main.box.high.v + kApart - box.low.v});
    main.primitives.insert(main.primitives.end(), title.begin(), title.end());
    main.box.add(boxOf(title));
}

Primitives titleAbout(DrawingContext& context, const ViewPicture& main, const Box2& all) {
    const int position = positionOf(context.style);
    if (position == kNoTitle || position == kAboveMainView)
        return {};
    Primitives title = detailTitle(context, main);
    const Box2 box = boxOf(title);
    const bool isBelow = position == kLowerLeft || position == kBelowDetail || position == kLowerRight;
    const bool isLeft = position == kLowerLeft || position == kUpperLeft;
    const bool isRight = position == kLowerRight || position == kUpperRight;
    moveAll(title, {isLeft    ? all.low.u - box.low.u
                    : isRight ? all.high.u - box.high.u
                              : all.middle().u - box.middle().u,
                    isBelow ? all.low.v - kApart - box.high.v : all.high.v + kApart - box.low.v});
    return title;
}
