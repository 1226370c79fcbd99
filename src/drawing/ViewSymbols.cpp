#include "base/Translation.h"
#include "drawing/Figures.h"
#include "drawing/ViewFigures.h"

#include <numbers>

namespace {

// Lines of a hatch through loops on the sheet.
void addHatch(Primitives& hatch, const std::vector<Loop2>& loops, double degrees, double spacing,
              const Pen& pen, const ProvenancePtr& provenance, int object) {
    const double angle = degrees * std::numbers::pi / 180;
    const Vec2 along = {std::cos(angle), std::sin(angle)};
    const Vec2 across = {-along.v, along.u};
    Vec2 reach = {1e300, -1e300};
    Vec2 length = reach;
    for (const Loop2& loop : loops)
        for (const Vec2 p : loop) {
            const double a = p.u * across.u + p.v * across.v;
            const double l = p.u * along.u + p.v * along.v;
            reach = {std::min(reach.u, a), std::max(reach.v, a)};
            length = {std::min(length.u, l), std::max(length.v, l)};
        }
    constexpr double kMostLines = 2000;
    const double step = std::max(spacing, (reach.v - reach.u) / kMostLines);
    const double first = std::ceil(reach.u / step);
    const double lines = std::ceil(reach.v / step) - first;
    for (int i = 0; i < lines; ++i) {
        const double a = (first + i) * step;
        const Vec2 from = across * a + along * (length.u - 1);
        const Vec2 to = across * a + along * (length.v + 1);
        for (const auto& [begin, end] : insideParts(loops, from, to))
            hatch.push_back(Figures::line({from + (to - from) * begin, from + (to - from) * end}, pen,
                                          Primitive::kHatch, provenance, object));
    }
}

constexpr double kBeyond = 2.5; // mm that centre lines reach beyond what they belong to

void addCentreLines(Primitives& lines, const ViewScene& scene, const PartObject& object, int index,
                    const Pen& pen, const ProvenancePtr& provenance) {
    for (const Vec3& centre : object.centres) {
        const double depth = scene.camera.depth(centre);
        const Vec2 at = scene.onSheet(centre);
        if (depth < scene.camera.nearDepth - 50 || depth > scene.camera.farDepth)
            continue;
        if (scene.looksAlong(object.axis)) {
            const double reach = object.diameter / 2 * scene.scale() + kBeyond;
            lines.push_back(Figures::line({at - Vec2{reach, 0}, at + Vec2{reach, 0}}, pen,
                                          Primitive::kCentreLine, provenance, index));
            lines.push_back(Figures::line({at - Vec2{0, reach}, at + Vec2{0, reach}}, pen,
                                          Primitive::kCentreLine, provenance, index));
            continue;
        }
        // Through all of the hole or bolt, as far as it is seen.
        Vec2 reach = {1e300, -1e300};
        for (const Edge& edge : object.solid.edges)
            for (const Vec3& p : {edge.a, edge.b}) {
                const Vec3 d = p - centre;
                const double along = dot(d, object.axis);
                const bool isOwn = (d - object.axis * along).length() < object.diameter * 1.5 &&
                                   std::ranges::none_of(object.centres, [&](const Vec3& other) {
                                       return (p - other).length() < d.length() - 1e-6;
                                   });
                if (isOwn)
                    reach = {std::min(reach.u, along), std::max(reach.v, along)};
            }
        if (reach.u > reach.v)
            continue;
        const Vec2 from = scene.onSheet(centre + object.axis * reach.u);
        const Vec2 to = scene.onSheet(centre + object.axis * reach.v);
        const double length = std::max((to - from).length(), 1e-6);
        const Vec2 more = (to - from) * (kBeyond / length);
        lines.push_back(
            Figures::line({from - more, to + more}, pen, Primitive::kCentreLine, provenance, index));
    }
}

bool isInWindow(const ViewScene& scene, Vec2 flat) {
    const Box2& window = scene.camera.window;
    return flat.u > window.low.u && flat.u < window.high.u && flat.v > window.low.v && flat.v < window.high.v;
}

Loop2 frameOf(const ViewScene& scene) {
    const Box2& window = scene.camera.window;
    return {window.low, {window.high.u, window.low.v}, window.high, {window.low.u, window.high.v}};
}

// The piece of the axis between the planes that bound what the view shows.
std::optional<std::pair<Vec3, Vec3>> withinDepths(const ViewCamera& camera, const PartObject& object) {
    const double start = camera.depth(object.start);
    const double way = camera.depth(object.end) - start;
    if (std::abs(way) < 1e-6)
        return start >= camera.nearDepth && start <= camera.farDepth
                   ? std::optional(std::pair(object.start, object.end))
                   : std::nullopt;
    const double first = (camera.nearDepth - start) / way;
    const double last = (camera.farDepth - start) / way;
    const double from = std::max(0.0, std::min(first, last));
    const double to = std::min(1.0, std::max(first, last));
    const Vec3 axis = object.end - object.start;
    return from < to ? std::optional(std::pair(object.start + axis * from, object.start + axis * to))
                     : std::nullopt;
}

// Margins of a damaged view can leave a window that is turned inside out.
Vec2 kept(const ViewScene& scene, Vec2 flat) {
    const Box2& window = scene.camera.window;
    return {std::max(std::min(flat.u, window.high.u), window.low.u),
            std::max(std::min(flat.v, window.high.v), window.low.v)};
}

} // namespace

Primitives hatchesOf(DrawingContext& context, const ViewScene& scene) {
    Primitives hatch;
    for (const auto& [index, model] : scene.seen.cutFaces) {
        const ObjectLook& look = scene.looks.at(index);
        const auto* settings =
            look.appearance ? context.rows.row<StructDetHatchSettings>(look.appearance->hatchKey) : nullptr;
        if (!settings || !scene.showsAnything)
            continue;
        std::vector<Loop2> loops;
        for (const Loop2& loop : model) {
            loops.emplace_back();
            for (const Vec2 p : loop)
                loops.back().push_back(scene.onSheet(kept(scene, p)));
        }
        Pen pen = context.pens.thin(settings->color);
        const ProvenancePtr provenance =
            nearer(context.rows.step(*settings, {"pattern", "angle", "spacing", "color"}),
                   nearer(context.rows.step(*look.appearance, {"hatch"}), look.provenance));
        const bool crossed = settings->pattern == "NET" || settings->pattern == "CROSS";
        if (!crossed && settings->pattern != "ANSI31")
            context.rows.note(KorString::format(
                translated("The hatch pattern \"%s\" is drawn as plain lines."), {settings->pattern}));
        constexpr double kLeast = 0.3; // mm between lines that can still be told apart
        const double spacing = std::max(settings->spacing, kLeast);
        addHatch(hatch, loops, settings->angle, spacing, pen, provenance, index);
        if (crossed)
            addHatch(hatch, loops, settings->angle + 90, spacing, pen, provenance, index);
    }
    return hatch;
}

Primitives centreLinesOf(DrawingContext& context, const ViewScene& scene) {
    Primitives lines;
    for (const auto& [index, look] : scene.looks) {
        const PartObject& object = context.object(index);
        if (!look.drawn || !look.appearance || look.appearance->centreLines == 0 || !scene.showsAnything)
            continue;
        const Pen pen = context.pens.centreLine(look.appearance->visibleColor);
        const ProvenancePtr provenance =
            nearer(context.rows.step(*look.appearance, {"centre_lines", "visible_color"}), look.provenance);
        if (object.isRound() && isInWindow(scene, scene.camera.flat(object.start)))
            addCentreLines(lines, scene, object, index, pen, provenance);
        const auto family = object.properties.find("family");
        const bool isTube = object.type == eObjectType::kProfile && family != object.properties.end() &&
                            (family->second.text == "CHS" || family->second.text == "RD");
        if (!isTube)
            continue;
        const std::optional<std::pair<Vec3, Vec3>> axis = withinDepths(scene.camera, object);
        if (!axis)
            continue;
        const Vec2 start = scene.camera.flat(axis->first);
        const Vec2 way = scene.camera.flat(axis->second) - start;
        for (const auto& [from, to] : insideParts({frameOf(scene)}, start, start + way)) {
            const Vec2 a = scene.onSheet(start + way * from);
            const Vec2 b = scene.onSheet(start + way * to);
            if ((b - a).length() < 1)
                continue;
            const Vec2 more = (b - a) * (kBeyond / (b - a).length());
            lines.push_back(
                Figures::line({a - more, b + more}, pen, Primitive::kCentreLine, provenance, index));
        }
    }
    return lines;
}

Primitives gridOf(DrawingContext& context, const ViewScene& scene) {
    Primitives grid;
    const auto* settings = context.rows.row<StructDetGridRefSettings>(context.style.gridRefSettingsKey);
    const bool isPlan = std::abs(scene.camera.frame.y.z) > 0.99;
    const bool isUpright = scene.camera.frame.z.z > 0.99;
    for (const auto& [index, look] : scene.looks) {
        const PartObject& object = context.object(index);
        const bool isGrid = object.type == eObjectType::kGrid;
        if (!look.drawn || !scene.showsAnything || (!isPlan && !isUpright) ||
            (isGrid ? !settings || settings->showGrid == 0 : object.type != eObjectType::kLevel || isPlan))
            continue;
        static const StructDetObjAppearance kPlain;
        const StructDetObjAppearance& appearance = look.appearance ? *look.appearance : kPlain;
        Pen pen =
            context.pens.pen(appearance.visibleLinetypeKey, appearance.visibleColor, appearance.lineWeight);
        ProvenancePtr provenance = look.provenance;
        if (look.appearance)
            provenance =
                nearer(context.rows.step(appearance, {"visible_linetype", "visible_color", "line_weight"}),
                       provenance);
        const bool isPoint = scene.looksAlong(object.axis);
        if (!isPlan && isGrid && !isPoint)
            continue; // it lies in the plane of the elevation
        const double overhang = isGrid ? settings->overhang : 0;
        if (isGrid) {
            provenance =
                nearer(context.rows.step(*settings, {"show_grid", "bubble_diameter", "overhang", "linetype"}),
                       provenance);
            if (settings->linetypeKey > 0)
                pen.linetype = context.pens.linetype(settings->linetypeKey);
        }
        Vec2 from = scene.onSheet(kept(scene, scene.camera.flat(object.start)));
        Vec2 to = scene.onSheet(kept(scene, scene.camera.flat(object.end)));
        if (isPoint && !isGrid) {
            from.u = scene.outline.low.u - kBeyond * 4;
            to.u = scene.outline.high.u + kBeyond;
        } else if (isPoint) {
            from.v = scene.outline.low.v;
            to.v = scene.outline.high.v;
        }
        const bool isOutside = scene.outline.isEmpty() ||
                               !isInWindow(scene, scene.camera.flat((object.start + object.end) * 0.5));
        if (isOutside || (to - from).length() < 1)
            continue;
        const Vec2 along = (to - from) * (1 / (to - from).length());
        from = from - along * overhang;
        to = to + along * overhang;
        grid.push_back(Figures::line({from, to}, pen, Primitive::kGridLine, provenance, index));
        if (isGrid && settings->bubbleDiameter > 0) {
            const double radius = settings->bubbleDiameter / 2;
            const Vec2 centre =
                isPlan && std::abs(along.u) > std::abs(along.v) ? from - along * radius : to + along * radius;
            grid.push_back(Figures::circle(centre, radius, context.pens.thin(appearance.visibleColor),
                                           Primitive::kSymbol, provenance, index));
            grid.push_back(Figures::text(context.pens, centre, radius, object.name, Primitive::kSymbol,
                                         provenance, index));
        }
        if (!isGrid) {
            constexpr double kMark = 2.5;
            const Vec2 at = from + along * 6;
            grid.push_back(Figures::line(
                {at, at + Vec2{-kMark, kMark * 1.5}, at + Vec2{kMark, kMark * 1.5}, at},
                context.pens.thin(appearance.visibleColor), Primitive::kSymbol, provenance, index));
        }
    }
    return grid;
}

Primitives compassOf(DrawingContext& context, const ViewScene& scene, const Box2& box) {
    const StructDetViewRequest& view = *scene.request;
    if (view.compassKey <= 0 || box.isEmpty() || !scene.showsAnything)
        return {};
    const Vec2 north = scene.camera.flat(scene.camera.frame.origin + Vec3{0, 1, 0}) -
                       scene.camera.flat(scene.camera.frame.origin);
    if (north.length() < 0.1) {
        context.rows.note(KorString::format(
            translated("The view \"%s\" has no compass: it looks to the north or south."), {view.name}));
        return {};
    }
    const int corner = (view.compassKey - 1) % 4; // upper left, lower left, lower right, upper right
    const bool isSymbol = view.compassKey > 4;
    bool left = corner < 2;
    bool up = corner == 0 || corner == 3;
    if (context.isOverview) {
        left = view.compassInOverviews % 2 == 0;
        up = view.compassInOverviews < 2;
    }
    constexpr double kSize = 8; // mm from the middle
    const Vec2 at = {left ? box.low.u - kSize - 4 : box.high.u + kSize + 4,
                     up ? box.high.v - kSize : box.low.v + kSize};
    const Vec2 d = north * (1 / north.length());
    const Vec2 side = {-d.v, d.u};
    const Pen pen = context.pens.thin();
    const ProvenancePtr provenance =
        nearer(context.rows.step(view, {"compass", "compass_in_overviews"}), context.chain);
    Primitives compass;
    compass.push_back(Figures::line({at - d * kSize, at + d * kSize}, pen, Primitive::kSymbol, provenance));
    compass.push_back(
        Figures::line({at + d * (kSize * 0.5) + side * 2, at + d * kSize, at + d * (kSize * 0.5) - side * 2},
                      pen, Primitive::kSymbol, provenance));
    if (isSymbol) {
        compass.push_back(Figures::circle(at, kSize * 0.6, pen, Primitive::kSymbol, provenance));
        compass.push_back(
            Figures::line({at - side * kSize, at + side * kSize}, pen, Primitive::kSymbol, provenance));
    }
    compass.push_back(
        Figures::text(context.pens, at + d * (kSize + 3), 3.5, "N", Primitive::kSymbol, provenance, -1));
    return compass;
}
