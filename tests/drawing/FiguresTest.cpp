#include "drawing/DrawingFixture.h"

#include "drawing/LabelPlacing.h"

namespace {

class FiguresTest : public DrawingTest {
protected:
    std::vector<std::string> textsOf(const Drawing& drawing, Primitive::ePurpose purpose) {
        std::vector<std::string> texts;
        for (const Primitive* primitive : drawing.all())
            if (primitive->kind == Primitive::kText && primitive->purpose == purpose)
                texts.push_back(primitive->text);
        return texts;
    }
    // The dimensions of one view that has these requests alone.
    std::vector<std::string> dimensions(const char* style, const char* view,
                                        const std::vector<const char*>& requests, const SamplePart& part) {
        const std::int32_t strategy =
            add(StructDetViewDimStrategy{}, KorString("D") + KorString::number(++m_made));
        StructDetViewDimStrategyItem item;
        item.strategyKey = strategy;
        for (const char* request : requests) {
            ++item.order;
            item.dimRequestKey = row<StructDetViewDimRequestLinear>(request).key;
            add(item, request);
        }
        const auto& record = row<StructDetViewRequest>(view);
        set(kTableViewRequest, record.key, "dim_strategy", std::int64_t(strategy));
        return textsOf(draw(row<StructDetailStyle>(style).key, part, SourceId::standard(), record.key),
                       Primitive::kDimension);
    }

private:
    int m_made = 0;
};

using Texts = std::vector<std::string>;

} // namespace

// The plate is 420 x 280: holes at 50, 130, 210 and 290 in rows at 60 and 140, slots at 60 and 180, 230 high.
TEST_F(FiguresTest, DimensionsShowThePitchesOfHoles) {
    const SamplePart plate = part("plate");
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes along", "Plate length"}, plate),
              (Texts{"50", "10", "70", "50", "30", "80", "130", "420"}));
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes across", "Plate width"}, plate),
              (Texts{"60", "80", "90", "50", "280"}));
    // Within 12 mm the slot at 60 stands on one line with the hole at 50.
    const auto line = row<StructDetGeometricRestrictions>("Same line").key;
    set(kTableGeometricRestrictions, line, "tolerance", 12.0);
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes along"}, plate),
              (Texts{"50", "80", "50", "30", "80", "130"}));
    set(kTableGeometricRestrictions, line, "tolerance", 1.0);
    const auto along = row<StructDetViewDimRequestLinear>("Plate holes along").key;
    set(kTablePointSelection, row<StructDetViewDimPointSelection>("Hole centres").key, "qualifier_set",
        std::int64_t(row<StructDetObjQualifierSet>("Round holes").key));
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes along"}, plate),
              (Texts{"50", "3 x 80 = 240", "130"}));
    set(kTableDimRequest, along, "minimum_length", 100.0);
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes along"}, plate), (Texts{"130"}));
    set(kTableDimRequest, along, "minimum_length", 0.0);
    set(kTableDimRequest, along, "chained", std::int64_t(0));
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate holes along"}, plate),
              (Texts{"50", "130", "210", "290", "420"}));
}

// A clipped view measures the whole part all the same.
TEST_F(FiguresTest, MeasuresAreThoseOfTheModel) {
    EXPECT_EQ(dimensions("Beam, shop drawing, clipped", "Beam, front, clipped", {"Overall length"},
                         part("long-beam")),
              (Texts{"24000"}));
    EXPECT_EQ(dimensions("Beam, single part", "Part, top", {"Holes along the part, running"}, part("beam")),
              (Texts{"0", "2880", "3000", "5950"}));
    EXPECT_EQ(dimensions("Beam, shop drawing", "Beam, front", {"Top of steel"}, part("beam")),
              (Texts{"T.O.S. +0.000"}));
    EXPECT_EQ(dimensions("Bracing bay", "Bracing, front", {"Slope of the member"}, part("bracing")),
              (Texts{"36.9°"}));

    // In feet and inches, to the next sixteenth.
    set(kTableNumericDefault, row<StructNumericDefault>("C01_DistanceUnit").key, "value", 1.0);
    EXPECT_EQ(dimensions("Plate, single part", "Plate, flat", {"Plate width"}, part("plate")),
              (Texts{"11\""}));
    EXPECT_EQ(dimensions("Beam, shop drawing, clipped", "Beam, front, clipped", {"Overall length"},
                         part("long-beam")),
              (Texts{"78'-8 7/8\""}));
    EXPECT_EQ(dimensions("Beam, shop drawing", "Beam, front", {"Top of steel"}, part("beam")),
              (Texts{"T.O.S. +0\""}));
    // Of the places 50, 290 and 420 mm: 31, 183 and 265 sixteenths. Each stretch alone would give 264.
    set(kTablePointSelection, row<StructDetViewDimPointSelection>("Hole centres").key, "qualifier_set",
        std::int64_t(row<StructDetObjQualifierSet>("Round holes").key));
    EXPECT_EQ(
        dimensions("Plate, single part", "Plate, flat", {"Plate holes along", "Plate length"}, part("plate")),
        (Texts{"1 15/16\"", "3 equal = 9 1/2\"", "5 1/8\"", "1'-4 9/16\""}));
}

// Nothing is dimensioned that a view does not show, what is spaced alike is of one kind, members of plans are
// measured across, and the ends of a part count wherever its box begins.
TEST_F(FiguresTest, DimensionsAreThoseThatAShopWouldMeasure) {
    const struct {
        const char* style;
        const char* view;
        const char* request;
        const char* part;
        Texts expected;
    } kCases[] = {
        {"Bracing, single part", "Part, front", "Slotted holes", "bracing", {}},
        {"Stair flight", "Stair, tread", "Storey heights", "stair", {}},
        {"Beam, single part", "Part, front", "Slotted holes", "beam", {"3000", "3000"}},
        {"Beam, web and flange", "Beam, top flange", "Overall length", "beam", {"6000"}},
        {"Truss, assembly", "Truss, elevation", "Overall length", "truss", {"12000"}},
        {"Truss, assembly",
         "Truss, elevation",
         "Nodes along the chord",
         "truss",
         {"1500", "6 x 1500 = 9000", "1500"}},
        {"Plan of a storey",
         "Plan of a storey",
         "Beams from the grid",
         "storey",
         {"3 x 2000 = 6000", "6000", "3 x 2000 = 6000"}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(dimensions(each.style, each.view, {each.request}, part(each.part)), each.expected)
            << each.request << " of " << each.part;
}

TEST_F(FiguresTest, DimensionLinesStandAtTheirDistances) {
    const auto& strategy = row<StructDetViewDimStrategy>("Plate");
    const auto lineAt = [&] {
        const Drawing drawing = draw("Plate, single part", "plate");
        double lowest = 1e300;
        double edge = 1e300;
        for (const Primitive* primitive : drawing.all())
            for (const Vec2 p : primitive->points) {
                if (primitive->purpose == Primitive::kVisibleEdge && primitive->kind == Primitive::kLine)
                    edge = std::min(edge, p.v);
                if (primitive->purpose == Primitive::kDimension && primitive->kind == Primitive::kLine &&
                    primitive->points[0].v == primitive->points[1].v && primitive->points.size() == 2)
                    lowest = std::min(lowest, p.v);
            }
        return edge - lowest;
    };
    EXPECT_NEAR(lineAt(), 10 + 7, 0.01); // holes first, the length outside of them
    set(kTableViewDimStrategy, strategy.key, "first_line_distance", 14.0);
    set(kTableViewDimStrategy, strategy.key, "line_spacing", 9.0);
    EXPECT_NEAR(lineAt(), 14 + 9, 0.01);
}

TEST_F(FiguresTest, OrdinatesAtTheirObjectsKeepClearOfTheirEdges) {
    int values = 0;
    for (const ViewPicture& view : draw("Column, single part", "column").views) {
        double edge = 1e300;
        for (const Primitive& each : view.primitives)
            if (each.purpose == Primitive::kVisibleEdge && each.kind == Primitive::kLine)
                edge = std::min({edge, each.points[0].v, each.points[1].v});
        for (const Primitive& each : view.primitives)
            if (each.kind == Primitive::kText && each.turned > 89) {
                ++values;
                EXPECT_LT(each.box().high.v, edge) << each.text;
            }
    }
    EXPECT_EQ(values, 5);
}

// The section looks along the beam from 10 mm before the middle of the connection, which goes from -20 to
// 350: at 155. The end plate begins at -20; the scale is 1:15.
TEST_F(FiguresTest, CutsAreMarkedWhereTheyAreTaken) {
    const Drawing drawing = draw("Beam, shop drawing with sections", "beam");
    const ViewPicture& main = drawing.views.at(0);
    double edge = 1e300;
    std::vector<double> strokes;
    int letters = 0;
    for (const Primitive& primitive : main.primitives) {
        if (primitive.purpose == Primitive::kVisibleEdge && primitive.kind == Primitive::kLine)
            edge = std::min({edge, primitive.points[0].u, primitive.points[1].u});
        if (primitive.purpose == Primitive::kSymbol && primitive.pen.weight == 0.5)
            strokes.push_back(primitive.points[0].u);
        letters += primitive.purpose == Primitive::kSymbol && primitive.text == "A";
    }
    ASSERT_EQ(strokes.size(), 2u);
    for (const double stroke : strokes)
        EXPECT_NEAR(stroke - edge, (155 + 20) / 15.0, 0.01);
    EXPECT_EQ(letters, 2);
}

TEST_F(FiguresTest, LabelsTellOfTheirObjectsAsTheirStrategySays) {
    const auto texts = [&] { return textsOf(draw("Plate, single part", "plate"), Primitive::kLabel); };
    Texts labels = texts();
    for (const char* text : {"p21", "PL 15 x 280", "8", "holes 22"})
        EXPECT_EQ(std::ranges::count(labels, text), 1) << text;
    const auto unit = row<StructNumericDefault>("C01_DistanceUnit").key;
    set(kTableNumericDefault, unit, "value", 1.0);
    labels = texts();
    for (const char* text : {"PL 9/16\" x 11\"", "holes 7/8\""})
        EXPECT_EQ(std::ranges::count(labels, text), 1) << text;
    const Texts levels = textsOf(draw("Stair flight", "stair"), Primitive::kLabel);
    EXPECT_TRUE(std::ranges::any_of(levels, [](const auto& t) { return t.ends_with("+8'-3 3/16\""); }));
    set(kTableNumericDefault, unit, "value", 0.0);
    const auto& strategy = row<StructDetObjAnnotationStrategy>("Plate mark with thickness");
    set(kTableAnnotationStrategy, strategy.key, "contents", KorString("{L1}[{mark}] {phase}"));
    labels = texts();
    for (const char* text : {"[", "]", "{phase}"})
        EXPECT_EQ(std::ranges::count_if(labels, [&](const auto& t) { return t.find(text) != t.npos; }), 1)
            << text;
    // A mark that is not repeated stands in the first view alone.
    const auto marks = [&] {
        const Drawing drawing = draw("Base plate", "plate");
        return std::ranges::count_if(drawing.all(),
                                     [&](const Primitive* p) {
                                         return p->purpose == Primitive::kLabel &&
                                                p->text == "[" + std::string("p21") + "]";
                                     }) +
               std::ranges::count_if(drawing.all(), [&](const Primitive* p) {
                   return p->purpose == Primitive::kLabel && p->text == "p21";
               });
    };
    EXPECT_EQ(marks(), 2);
    set(kTableAnnotationStrategy, strategy.key, "repeat_per_view", std::int64_t(0));
    EXPECT_EQ(marks(), 1);
}

TEST(LabelPlacingTest, KeepsLabelsApartWithinTheirReach) {
    Primitive line;
    line.points = {{-100, 12}, {100, 12}};
    LabelPlacing placing({line});
    WantedLabel label{{{0, 0}}, {20, 4}, 8, 60, 3, false, std::nullopt};
    std::vector<Box2> boxes;
    for (int i = 0; i < 6; ++i) {
        const Vec2 middle = placing.place(label).middle;
        Box2 box;
        box.add(middle - label.size * 0.5);
        box.add(middle + label.size * 0.5);
        EXPECT_FALSE(box.low.v < 12 && box.high.v > 12) << i;
        for (const Box2& other : boxes)
            EXPECT_TRUE(box.low.u >= other.high.u || other.low.u >= box.high.u || box.low.v >= other.high.v ||
                        other.low.v >= box.high.v)
                << i;
        EXPECT_LE((middle - label.anchors[0]).length(), 60 + 15);
        boxes.push_back(box);
    }
    label.farthest = label.distance = 8;
    label.mayCover = true;
    EXPECT_NE(placing.place(label).middle, Vec2{});
}

TEST(LabelPlacingTest, KeepsClearOfALineThatItWouldOnlyTouch) {
    Primitive line;
    line.points = {{7.9, -100}, {7.9, 100}};
    LabelPlacing placing({line});
    const WantedLabel label{{{0, 0}}, {20, 4}, 8, 60, 2, false, std::nullopt};
    EXPECT_GE(placing.place(label).middle.u - label.size.u / 2, 7.9 + 0.5);
}
