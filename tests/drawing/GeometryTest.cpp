#include "drawing/DrawingFixture.h"

#include "drawing/Arrangement.h"
#include "drawing/AxisMap.h"
#include "drawing/CutSolid.h"
#include "drawing/HiddenLines.h"
#include "drawing/LabelPlacing.h"
#include "drawing/LengthClipping.h"

#include <random>

namespace {

SamplePart partOf(const std::string& lines) {
    const TempFolder folder;
    writeBytes(folder.path() / "x.part", "part Test\n" + lines);
    Result<SamplePart> part = SampleParts::readFile(folder.path() / "x.part");
    EXPECT_EQ(part.error, "");
    return part.value;
}

// From the front, with all that there is.
ViewCamera frontCamera() {
    ViewCamera camera;
    camera.nearDepth = -1e4;
    camera.farDepth = 1e4;
    camera.window.add(Vec2{-1e5, -1e5});
    camera.window.add(Vec2{1e5, 1e5});
    return camera;
}

ViewLines seen(const SamplePart& part, const ViewCamera& camera) {
    std::vector<int> all;
    for (std::size_t i = 0; i < part.objects.size(); ++i)
        all.push_back(static_cast<int>(i));
    return linesOf(part, all, camera);
}

double lengthOf(const ViewLines& seen, bool visible, int object = -1) {
    double length = 0;
    for (const ViewLine& line : seen.lines)
        if (line.visible == visible && (object < 0 || line.object == object))
            length += (line.b - line.a).length();
    return length;
}

const std::string kBeam = "profile B family=I section=400,180,8,14 from=0,0,0 to=1000,0,0\n";

} // namespace

// Through the middle of a hole of 22 in a web of 8: what is left of the section is closed around the gap.
TEST(GeometryTest, ACutThroughAHoleLeavesClosedFaces) {
    const SamplePart part =
        partOf(kBeam + "hole H in=B diameter=22 at=500,0,0 axis=y reach=10 description=hole\n");
    const auto areaAt = [&](double x) {
        ViewCamera camera = frontCamera();
        camera.frame = {{}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}};
        camera.nearDepth = x;
        double area = 0;
        for (const Loop2& loop : cutSolid(part.objects[0].solid, part.objects[0].box, camera).loops) {
            double sum = 0;
            for (std::size_t i = 0; i < loop.size(); ++i)
                sum += cross(loop[i], loop[(i + 1) % loop.size()]) / 2;
            area += std::abs(sum);
        }
        return area;
    };
    EXPECT_NEAR(areaAt(100), 2 * 180 * 14 + (400 - 2 * 14) * 8, 1);
    EXPECT_NEAR(areaAt(500), areaAt(100) - 22 * 8, 1);
}

// A box of 200 x 300 before one of 400 x 100: what lies behind is hidden, in one line also behind two parts,
// and what lies upon an edge is there once.
TEST(GeometryTest, HiddenEdgesAreToldFromVisibleOnes) {
    const SamplePart part = partOf("plate front at=0,0,0 size=200,300 thickness=20\n"
                                   "plate behind at=-100,50,100 size=400,100 thickness=20\n");
    const ViewLines lines = seen(part, frontCamera());
    EXPECT_NEAR(lengthOf(lines, true, 0), 2 * (200 + 300), 0.1);
    EXPECT_NEAR(lengthOf(lines, true, 1), 2 * (400 + 100) - 2 * 200, 0.1);
    EXPECT_NEAR(lengthOf(lines, false, 1), 2 * 200, 0.1);
    const ViewLines inTwo = seen(partOf("plate left at=0,0,0 size=80,300 thickness=20\n"
                                        "plate right at=80,0,0 size=120,300 thickness=20\n"
                                        "plate behind at=-100,50,100 size=400,100 thickness=20\n"),
                                 frontCamera());
    EXPECT_EQ(std::ranges::count(inTwo.lines, false, &ViewLine::visible), 2);
    EXPECT_NEAR(lengthOf(inTwo, false, 2), 2 * 200, 0.1);
}

// From the front an I shows flanges of 14 mm; its web lies behind nothing, and its far edges upon the near
// ones.
// What the grid says of segments before any faces, convex or not, level or sloping, with holes or without, is
// what each face says of each point.
TEST(GeometryTest, FacesHideWhatLiesBehindThem) {
    std::mt19937 random(7);
    const auto any = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const auto box = [](Vec2 low, Vec2 size) {
        return Loop2{low, {low.u + size.u, low.v}, low + size, {low.u, low.v + size.v}};
    };
    FaceGrid grid;
    std::vector<ViewFace> faces;
    for (int i = 0; i < 60; ++i) {
        const Vec2 low = {any(0, 90), any(0, 90)};
        const Vec2 size = {any(5, 40), any(5, 40)};
        ViewFace face;
        face.loops = {box(low, size)};
        if (i % 3 == 1)
            face.loops.push_back(box(low + size * 0.25, size * 0.5));
        if (i % 3 == 2) // an arrow: not convex
            face.loops = {{low, {low.u + size.u, low.v}, low + size * 0.3, {low.u, low.v + size.v}}};
        face.base = any(0, 100);
        face.du = i % 2 ? any(-1, 1) : 0;
        face.nearest = 1e300;
        for (const Vec2 corner : face.loops[0]) {
            face.box.add(corner);
            face.nearest = std::min(face.nearest, face.depthAt(corner));
        }
        faces.push_back(face);
        grid.add(face);
    }
    grid.sort();
    int hidden = 0;
    for (int i = 0; i < 2000; ++i) {
        const ViewPoint a = {{any(0, 120), any(0, 120)}, any(0, 150)};
        const Vec2 way = {any(-30, 30), any(-30, 30)};
        const ViewPoint b = {a.at + way, a.depth + any(-20, 20)};
        const Vec2 beside = Vec2{-way.v, way.u} * (FaceGrid::kSide / way.length());
        const bool isAsked = grid.look(a, b);
        for (double t : {0.01, 0.2, 0.4, 0.6, 0.8, 0.99}) {
            const auto covered = [&](Vec2 aside) {
                const Vec2 at = a.at + way * t + aside;
                const double depth = a.depth + (b.depth - a.depth) * t;
                return std::ranges::any_of(faces, [&](const ViewFace& face) {
                    return face.depthAt(at) < depth - 0.02 && contains(face.loops, at);
                });
            };
            const bool expected = covered(beside) && covered(beside * -1);
            EXPECT_EQ(!isAsked || grid.hides(t), expected) << i << " at " << t;
            hidden += expected;
        }
    }
    EXPECT_GT(hidden, 1000);
    EXPECT_LT(hidden, 11000);
}

TEST(GeometryTest, AProfileShowsItsFlangesAndACopeTakesThemAway) {
    const ViewLines plain = seen(partOf(kBeam), frontCamera());
    EXPECT_NEAR(lengthOf(plain, true), 4 * 1000 + 2 * 400, 0.1);
    EXPECT_NEAR(lengthOf(plain, false), 0, 0.1);
    const ViewLines coped =
        seen(partOf(kBeam + "cut c in=B end=end side=top length=100 depth=50\n"), frontCamera());
    // Flange and web end at 900, the web goes on at a height of 350.
    EXPECT_NEAR(lengthOf(coped, true), 2 * 900 + 2 * 1000 + 400 + 350 + 100 + 50, 0.1);
    for (const ViewLine& line : coped.lines)
        EXPECT_FALSE(line.a.u > 901 && line.a.v > 151) << line.a.u << " " << line.a.v;
}

TEST(GeometryTest, HolesAreCirclesWithTheirPitchAndCanBeSeenThrough) {
    const SamplePart part = partOf("plate p at=0,0,0 size=400,200 thickness=10\n"
                                   "plate behind at=0,60,0 size=400,200 thickness=10\n"
                                   "plate strip at=95,30,0 size=10,200 thickness=10\n"
                                   "hole h in=p diameter=40 at=100,0,100 axis=y columns=3 gauge=80,0,0\n");
    const ViewLines lines = seen(part, frontCamera());
    std::set<int> centres;
    double strip = 0;
    for (const ViewLine& line : lines.lines) {
        if (line.circle >= 0 && line.visible)
            centres.insert(
                static_cast<int>(std::lround(lines.circles[static_cast<std::size_t>(line.circle)].centre.u)));
        if (line.object == 2 && line.visible)
            strip += (line.b - line.a).length();
    }
    EXPECT_EQ(centres, (std::set<int>{100, 180, 260}));
    EXPECT_NEAR(strip, 2 * 2 * std::sqrt(20 * 20 - 5 * 5.0), 1); // both edges, through the first hole
}

TEST(GeometryTest, ACutClosesTheSolidAndKeepsWhatIsHollowHollow) {
    ViewCamera camera = frontCamera();
    camera.frame = {{}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}}; // along the profile
    camera.nearDepth = 500;
    const ViewLines lines =
        seen(partOf("profile T family=RHS section=200,100,8 from=0,0,0 to=1000,0,0\n"), camera);
    ASSERT_EQ(lines.cutFaces.size(), 1u);
    const std::vector<Loop2>& loops = lines.cutFaces[0].second;
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_TRUE(contains(loops, {46, 0}));
    EXPECT_FALSE(contains(loops, {0, 0}));
    EXPECT_NEAR(lengthOf(lines, true), 2 * (200 + 100) + 2 * (184 + 84), 0.1);
}

TEST(GeometryTest, LabelsStandApartAndAreSoughtAPlaceNoFurtherThanItServes) {
    LabelPlacing placing({});
    WantedLabel label{{{0, 0}}, {10, 4}};
    label.farthest = 1e15; // nobody waits until all of it was tried
    const Vec2 first = placing.place(label).middle;
    const Vec2 second = placing.place(label).middle;
    EXPECT_TRUE(std::abs(first.u - second.u) >= 10 || std::abs(first.v - second.v) >= 4);
    EXPECT_LT(first.length() + second.length(), 60);
}

// Along 10 m with details at both ends and at 4 m: two stretches, each with 200 mm left at its sides.
TEST(GeometryTest, StretchesWithoutDetailsAreCutOut) {
    const SamplePart part = partOf("plate p at=0,0,0 size=10000,200 thickness=10\n"
                                   "hole h in=p diameter=20 at=4000,0,100 axis=y\n");
    const ViewLines lines = seen(part, frontCamera());
    LengthClipping::Strategy strategy;
    strategy.keep = 200;
    strategy.interval = 2500;
    const auto cuts = LengthClipping::stretches(lines, 0, strategy);
    ASSERT_EQ(cuts.size(), 2u);
    EXPECT_NEAR(cuts[0].first, 200, 1);
    EXPECT_NEAR(cuts[0].second, 3990 - 200, 1);
    EXPECT_NEAR(cuts[1].first, 4010 + 200, 1);
    EXPECT_NEAR(cuts[1].second, 9800, 1);
    const AxisMap map(0.1, cuts, 5);
    EXPECT_NEAR(map.at(4000), 20 + 5 + 20 + 1, 0.2); // 200 mm at both sides and half the hole, at 1:10
    EXPECT_NEAR(map.at(10000), 4 * 20 + 2 * 5 + 2, 0.3);
    strategy.interval = 4500;
    EXPECT_EQ(LengthClipping::stretches(lines, 0, strategy).size(), 1u);
    // A line that runs obliquely through it keeps a stretch, unless such lines are clipped too.
    ViewLines oblique = lines;
    oblique.lines.push_back({{100, 10}, {9900, 190}, 0, true, ViewLine::kEdge, 0, -1});
    EXPECT_TRUE(LengthClipping::stretches(oblique, 0, strategy).empty());
    strategy.oblique = true;
    EXPECT_FALSE(LengthClipping::stretches(oblique, 0, strategy).empty());
}

TEST(GeometryTest, ViewsStandWhereTheirDirectionOrTheProjectionPutsThem) {
    const Vec3 x = {1, 0, 0}, y = {0, 1, 0}, z = {0, 0, 1};
    const auto view = [](int direction, Vec3 right, Vec3 up, double width, double height) {
        ArrangedView v;
        v.direction = direction;
        v.right = right;
        v.up = up;
        v.box.add(Vec2{-width / 2, -height / 2});
        v.box.add(Vec2{width / 2, height / 2});
        return v;
    };
    StructDetViewArrangeStrategy strategy;
    strategy.columnSpacing = 20;
    strategy.rowSpacing = 10;
    for (const int projection : {0, 1}) {
        strategy.projection = projection;
        const double side =
            projection == 0 ? 1 : -1; // first angle: the view from the left stands at the right
        std::vector<ArrangedView> views = {view(0, x, z, 100, 40), view(-1, y * -1, z, 30, 40),
                                           view(-1, x, y, 100, 20), view(2, y, z, 30, 40),
                                           view(5, x, z, 60, 60)};
        arrangeViews(views, strategy);
        EXPECT_EQ(views[1].moved, (Vec2{side * (50 + 20 + 15), 0})) << projection;
        EXPECT_EQ(views[2].moved, (Vec2{0, -side * (20 + 10 + 10)})) << projection;
        EXPECT_EQ(views[3].moved.u, projection == 0 ? -50 - 20 - 15 : -80 - 20 - 20 - 15) << projection;
        EXPECT_LT(views[4].moved.v + 30, views[2].moved.v - 10) << projection;
    }
    strategy.stackSections = 1;
    std::vector<ArrangedView> views = {view(0, x, z, 100, 40), view(5, y, z, 30, 30), view(5, y, z, 50, 20)};
    arrangeViews(views, strategy);
    EXPECT_EQ(views[1].moved, (Vec2{50 + 20 + 15, 20 - 15}));
    EXPECT_EQ(views[2].moved, (Vec2{50 + 20 + 25, 20 - 30 - 10 - 10}));
}
