#include "drawing/DrawingFixture.h"
#include "drawing/KeptPictures.h"

#include <clocale>
#include <random>

namespace {

class SampleDrawingTest : public DrawingTest {
protected:
    template <typename Visit>
    void eachStyle(Visit visit) {
        for (const SourceId id : databases.sources()) {
            const RowArray& styles = databases.source(id)->table(kTableDetailStyle).rows();
            for (int i = 0; i < styles.size(); ++i)
                visit(id, styles.at(i));
        }
    }
};

// The first thing that is seen of a purpose, or fails the test.
const Primitive& first(const Drawing& drawing, Primitive::ePurpose purpose, int object) {
    for (const Primitive* primitive : drawing.all())
        if (primitive->purpose == purpose && primitive->object == object)
            return *primitive;
    throw std::runtime_error("nothing of this purpose");
}

std::set<std::string> texts(const Drawing& drawing) {
    std::set<std::string> all;
    for (const Primitive* primitive : drawing.all())
        if (primitive->kind == Primitive::kText)
            all.insert(primitive->text);
    return all;
}

// Texts of the drawing that cover another one, save those that are written along a slope.
std::string covered(const Drawing& drawing) {
    std::vector<const Primitive*> level;
    for (const Primitive* primitive : drawing.all())
        if (primitive->kind == Primitive::kText && (primitive->turned == 0 || primitive->turned == 90))
            level.push_back(primitive);
    std::string pairs;
    constexpr double kTouch = 0.3; // mm
    for (std::size_t i = 0; i < level.size(); ++i)
        for (std::size_t k = 0; k < i; ++k) {
            const Box2 a = level[i]->box();
            const Box2 b = level[k]->box();
            if (std::min(a.high.u, b.high.u) - std::max(a.low.u, b.low.u) > kTouch &&
                std::min(a.high.v, b.high.v) - std::max(a.low.v, b.low.v) > kTouch)
                pairs += level[k]->text + " and " + level[i]->text + "; ";
        }
    return pairs;
}

// Texts of dimensions that lines of dimensions pass, save those that are written along a slope.
std::string crossed(const Drawing& drawing) {
    std::string found;
    for (const Primitive* text : drawing.all()) {
        if (text->kind != Primitive::kText || text->purpose != Primitive::kDimension ||
            (text->turned != 0 && text->turned != 90))
            continue;
        const Vec2 touch = {0.3, 0.3}; // mm
        const Box2 box = {text->box().low + touch, text->box().high - touch};
        const std::vector<Loop2> around = {
            {box.low, {box.high.u, box.low.v}, box.high, {box.low.u, box.high.v}}};
        for (const Primitive* line : drawing.all())
            if (line->kind == Primitive::kLine && line->purpose == Primitive::kDimension &&
                !insideParts(around, line->points[0], line->points[1]).empty()) {
                found += text->text + "; ";
                break;
            }
    }
    return found;
}

// Texts that an object has more than once in a view.
std::string labelledTwice(const Drawing& drawing) {
    std::string found;
    for (const ViewPicture& view : drawing.views) {
        std::set<std::pair<int, std::string>> labels;
        for (const Primitive& each : view.primitives)
            if (each.kind == Primitive::kText && each.purpose == Primitive::kLabel &&
                !labels.insert({each.object, each.text}).second)
                found += each.text + "; ";
    }
    return found;
}

const ViewPicture& viewOf(const Drawing& drawing, const std::string& name) {
    return *std::ranges::find(drawing.views, name, &ViewPicture::name);
}

} // namespace

// Pictures that are meant to change are kept anew with KEEP_DRAWINGS=1 in the environment.
TEST_F(SampleDrawingTest, EveryStyleDrawsEveryPartAsAgreedAndEachLineSaysWhoMadeIt) {
    KeptPictures kept(std::filesystem::path(SOURCE_DIR) / "tests/data/drawings");
    int drawn = 0;
    eachStyle([&](SourceId id, const StructRecord& style) {
        const std::string itsPart = suiting(style.key, id);
        for (const auto& [name, sample] : allParts()) {
            const Drawing drawing = draw(style.key, sample, id);
            drawn += !drawing.views.empty();
            kept.add(style.name.toStdString() + " | " + name, drawing, name == itsPart);
            if (name == itsPart) {
                EXPECT_FALSE(drawing.views.empty()) << style.name.toStdString();
                EXPECT_EQ(covered(drawing), "") << style.name.toStdString();
                EXPECT_EQ(crossed(drawing), "") << style.name.toStdString();
            }
            EXPECT_EQ(labelledTwice(drawing), "") << style.name.toStdString() << " of " << name;
            for (const Primitive* primitive : drawing.all()) {
                ASSERT_TRUE(primitive->provenance);
                EXPECT_TRUE(primitive->turned > -90 && primitive->turned <= 90) << "upside down";
                EXPECT_EQ(primitive->provenance->back().row, (RowRef{kTableDetailStyle, style.key}));
                for (const Vec2 p : primitive->points)
                    ASSERT_TRUE(std::isfinite(p.u) && std::isfinite(p.v));
            }
        }
    });
    EXPECT_GT(drawn, 800);
    if (std::getenv("KEEP_DRAWINGS"))
        return kept.keep();
    if (kept.changed().empty())
        kept.leaveToNextRun();
    EXPECT_EQ(kept.changed(), std::vector<std::string>()) << "see " << kept.writePage();
}

TEST_F(SampleDrawingTest, ThePartSuitsTheCategoryThenTheNameThenWhatTheMapsTellApart) {
    const auto style = [&](const char* name) { return row<StructDetailStyle>(name).key; };
    const auto rename = [&](eTableType table, std::int32_t key, const char* name) {
        set(table, key, "name", KorString(name));
    };
    EXPECT_EQ(suiting(style("Handrail on a flight")), "handrail");
    const std::int32_t purlin = style("Purlin and side rail");
    const std::int32_t ladder = style("Caged ladder");
    rename(kTableDetailStyle, purlin, "C 17");
    EXPECT_EQ(suiting(purlin), "purlin") << "of beams the one that its map is made for";
    rename(kTableDetailStyle, purlin, "Column");
    EXPECT_EQ(suiting(purlin), "purlin") << "it is filed under beams";
    rename(kTableBaseCategory, row<StructDetBaseCategory>("Beams").key, "Balken");
    EXPECT_EQ(suiting(purlin), "column") << "nobody knows the category, and the name tells";
    rename(kTableBaseCategory, row<StructDetBaseCategory>("Stairs and handrails").key, "7");
    rename(kTableDetailStyle, ladder, "L 3");
    EXPECT_EQ(suiting(ladder), "ladder") << "only the maps tell";
    EXPECT_EQ(suiting(4711), "base-plate") << "the first of all";
}

TEST_F(SampleDrawingTest, WhatAViewDoesNotShowHasNoDimensionsAndNoCentreLines) {
    // From above half of the diagonal is shown, and none of it that the whole length would be measured at.
    const Drawing bracing = draw("Assembly, general", "bracing");
    Box2 edges;
    Box2 dimensions;
    for (const Primitive& each : viewOf(bracing, "Assembly, top").primitives)
        if (each.purpose == Primitive::kVisibleEdge || each.purpose == Primitive::kDimension)
            (each.purpose == Primitive::kVisibleEdge ? edges : dimensions).add(each.box());
    EXPECT_LT(dimensions.low.u, dimensions.high.u);
    EXPECT_LT(dimensions.high.u, edges.high.u + 20);
    EXPECT_GT(dimensions.low.u, edges.low.u - 20);
    // Of holes that no entry draws nothing is measured.
    const auto plan = row<StructDetObjReprMap>("Anchor bolt plan").key;
    const auto style = row<StructDetailStyle>("Column base").key;
    DrawingRequest request{style, row<StructDetViewRequest>("Anchor group").key, supportFolder()};
    StyleSource& source = *databases.source(SourceId::standard());
    EXPECT_TRUE(texts(drawStyle(source, part("base-plate"), request)).contains("220"));
    const RowArray& entries = source.table(tableOf<StructDetObjReprMapKey>).rows();
    for (int i = 0; i < entries.size(); ++i)
        if (const auto& entry = static_cast<const StructDetObjReprMapKey&>(entries.at(i));
            entry.reprMapKey == plan && entry.name == "Holes")
            request.entriesOff.insert(entry.key);
    EXPECT_FALSE(texts(drawStyle(source, part("base-plate"), request)).contains("220"));
    // The posts stand behind what their view shows.
    EXPECT_EQ(draw("Handrail, straight", "stair").views.size(), 1u);
}

TEST_F(SampleDrawingTest, TheSameDrawingIsTheSameFileInEveryLocale) {
    const std::string before = svgOf(pageOf(draw("Beam, shop drawing", "beam")));
    const std::string old = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(svgOf(pageOf(draw("Beam, shop drawing", "beam"))), before);
    std::setlocale(LC_ALL, old.c_str());
    EXPECT_NE(before.find(">Schematic, of the sample part "), std::string::npos);
    EXPECT_EQ(before.find("nan"), std::string::npos);
}

TEST_F(SampleDrawingTest, AppearanceDecidesHowEdgesAreDrawn) {
    const auto& main = row<StructDetObjAppearance>("Main part");
    const auto style = row<StructDetailStyle>("Beam, single part").key;
    set(kTableAppearance, main.key, "visible_color", std::int64_t(5));
    set(kTableAppearance, main.key, "line_weight", 0.9);
    Drawing drawing = draw(style, part("beam"));
    const Primitive& edge = first(drawing, Primitive::kVisibleEdge, 0);
    EXPECT_EQ(edge.pen.color, 5);
    EXPECT_EQ(edge.pen.weight, 0.9);
    EXPECT_EQ(edge.pen.layer, "PART");
    EXPECT_EQ(edge.provenance->front().row, (RowRef{kTableAppearance, main.key}));
    const Primitive& hidden = first(drawing, Primitive::kHiddenEdge, 0);
    ASSERT_TRUE(hidden.pen.linetype);
    EXPECT_EQ(hidden.pen.linetype->name.toStdString(), "HIDDEN");
    EXPECT_EQ(hidden.pen.patternScale, 0.5);
    set(kTableAppearance, main.key, "visible_status", std::int64_t(0));
    set(kTableAppearance, main.key, "hidden_status",
        std::int64_t(row<StructDetailVisibilityStatus>("Not drawn").key));
    drawing = draw(style, part("beam"));
    for (const Primitive* primitive : drawing.all())
        EXPECT_FALSE(primitive->object == 0 && primitive->purpose == Primitive::kHiddenEdge);
}

TEST_F(SampleDrawingTest, ScalesAndClippingAreThoseOfTheView) {
    const auto& view = row<StructDetViewRequest>("Beam, front, clipped");
    const auto style = row<StructDetailStyle>("Beam, shop drawing, clipped").key;
    const SamplePart girder = part("long-beam");
    const auto widthAt = [&] {
        Box2 edges;
        const Drawing drawing = draw(style, girder, SourceId::standard(), view.key);
        for (const Primitive& primitive : drawing.views.at(0).primitives)
            if (primitive.purpose == Primitive::kVisibleEdge)
                edges.add(primitive.box());
        return edges.width();
    };
    EXPECT_EQ(draw(style, girder).views.at(0).scale, 0.1);
    const double clipped = widthAt();
    set(kTableLengthClip, view.lengthClipKey, "along_x", std::int64_t(0));
    const Drawing whole = draw(style, girder, SourceId::standard(), view.key);
    EXPECT_EQ(whole.views.at(0).scale, 1.0 / 40); // 24 m fit on the sheet at 1:40, 600 mm
    EXPECT_NEAR(widthAt(), 24060 / 40.0, 0.1);
    EXPECT_LT(clipped, 400);
    set(kTableViewRequest, view.key, "process_scale_override",
        std::int64_t(row<StructDetailProcessScaleOverride>("Twice the scale").key));
    EXPECT_NEAR(widthAt(), 24060 * 0.2, 0.1);
}

TEST_F(SampleDrawingTest, TitlesStandWhereTheStylePutsThemAndTellWhatIsKnown) {
    const auto& style = row<StructDetailStyle>("HB post 1:15", SourceId::user());
    const Drawing drawing = draw(style.key, part("column"), SourceId::user());
    const std::set<std::string> shown = texts(drawing);
    for (const char* text : {"C3", "HEB 240", "{project}", "Section A"})
        EXPECT_TRUE(shown.contains(text)) << text;
    for (int position = 0; position < 8; ++position) {
        set(kTableDetailStyle, style.key, "title_position", std::int64_t(position), SourceId::user());
        const Drawing placed = draw(style.key, part("column"), SourceId::user());
        Box2 views;
        for (const ViewPicture& view : placed.views)
            views.add(view.box);
        Box2 title;
        for (const Primitive& primitive : placed.sheet)
            if (primitive.purpose == Primitive::kTitle)
                title.add(primitive.box());
        const bool isAbout = position != 0 && position != 3;
        ASSERT_EQ(title.isEmpty(), !isAbout) << position;
        if (!isAbout)
            continue;
        const bool below = position == 1 || position == 4 || position == 5;
        EXPECT_EQ(below, title.high.v < views.low.v) << position;
        EXPECT_EQ(!below, title.low.v > views.high.v) << position;
        EXPECT_EQ(position == 1 || position == 6, std::abs(title.low.u - views.low.u) < 1) << position;
        EXPECT_EQ(position == 5 || position == 7, std::abs(title.high.u - views.high.u) < 1) << position;
    }
}
