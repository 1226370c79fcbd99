#include "drawing/BrokenEdges.h"

#include "drawing/Figures.h"

namespace {

constexpr double kBeyond = 2; // mm that break lines reach beyond what they cut off
constexpr double kTooth = 1.5;

// Where lines of one object end on the sides of the window: left, right, lower, upper.
using Ends = std::array<std::vector<double>, 4>;

void addEnds(Ends& ends, const Box2& window, Vec2 p) {
    constexpr double kOn = 0.05; // mm of the model
    if (std::abs(p.u - window.low.u) < kOn)
        ends[0].push_back(p.v);
    if (std::abs(p.u - window.high.u) < kOn)
        ends[1].push_back(p.v);
    if (std::abs(p.v - window.low.v) < kOn)
        ends[2].push_back(p.u);
    if (std::abs(p.v - window.high.v) < kOn)
        ends[3].push_back(p.u);
}

// A thin line with a tooth in its middle, from `low` to `high` along the side.
std::vector<Vec2> brokenLine(double low, double high) {
    const double middle = (low + high) / 2;
    const double tooth = std::min(kTooth, (high - low) / 6);
    return {{low, 0},
            {middle - tooth, 0},
            {middle - tooth / 2, tooth},
            {middle + tooth / 2, -tooth},
            {middle + tooth, 0},
            {high, 0}};
}

} // namespace

Primitives brokenEdgesOf(DrawingContext& context, const ViewScene& scene) {
    Primitives lines;
    if (!scene.showsAnything)
        return lines;
    const Box2& window = scene.camera.window;
    std::map<int, Ends> all;
    for (const ViewLine& line : scene.seen.lines)
        if (const eObjectType type = context.object(line.object).type;
            line.visible &&
            (type == eObjectType::kProfile || type == eObjectType::kPlate || type == eObjectType::kRail))
            for (const Vec2 p : {line.a, line.b})
                addEnds(all[line.object], window, p);
    static const StructDetViewSystemAndBox kPlain;
    const auto* box = context.rows.row<StructDetViewSystemAndBox>(scene.request->systemAndBoxKey);
    const ProvenancePtr provenance =
        box ? nearer(context.rows.step(*box, {"box_margin"}), scene.chain) : scene.chain;
    for (auto& [index, ends] : all)
        for (std::size_t side = 0; side < 4; ++side) {
            if (ends[side].size() < 2)
                continue;
            const auto [low, high] = std::ranges::minmax(ends[side]);
            const bool isUpright = side < 2;
            const AxisMap& map = scene.maps[isUpright ? 1 : 0];
            const double from = map.at(low) - kBeyond;
            const double to = map.at(high) + kBeyond;
            if (to - from < 2 * kBeyond + 0.5)
                continue;
            const double at = isUpright ? scene.maps[0].at(side == 0 ? window.low.u : window.high.u)
                                        : scene.maps[1].at(side == 2 ? window.low.v : window.high.v);
            std::vector<Vec2> points;
            for (const Vec2 p : brokenLine(from, to))
                points.push_back(isUpright ? Vec2{at + p.v, p.u} : Vec2{p.u, at + p.v});
            lines.push_back(Figures::line(std::move(points), context.pens.thin(), Primitive::kBreakLine,
                                          provenance, index));
        }
    return lines;
}
