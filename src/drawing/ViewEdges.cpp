#include "drawing/ViewFigures.h"

#include <numbers>

namespace {

struct Turn {
    double from;
    double to;
};

double degreesOf(Vec2 d) {
    const double degrees = std::atan2(d.v, d.u) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

// Pieces of one circle, put together where they touch.
std::vector<Turn> joined(std::vector<Turn> pieces) {
    std::ranges::sort(pieces, {}, &Turn::from);
    std::vector<Turn> turns;
    for (const Turn& piece : pieces)
        if (!turns.empty() && piece.from < turns.back().to + 0.5)
            turns.back().to = std::max(turns.back().to, piece.to);
        else
            turns.push_back(piece);
    if (turns.size() > 1 && turns.front().from + 360 < turns.back().to + 0.5) {
        turns.front().from = turns.back().from - 360;
        turns.pop_back();
    }
    if (turns.size() == 1 && turns[0].to - turns[0].from > 359)
        turns[0] = {0, 360};
    return turns;
}

struct Stroke {
    Pen pen;
    ProvenancePtr provenance;
};

// How a line of an object is drawn; nothing where it is not.
std::optional<Stroke> strokeOf(DrawingContext& context, const ViewScene& scene, const ViewLine& line) {
    static const StructDetObjAppearance kPlain;
    const ObjectLook& look = scene.looks.at(line.object);
    const StructDetObjAppearance& appearance = look.appearance ? *look.appearance : kPlain;
    if (!scene.showsAnything || (!line.visible && !scene.showsHidden))
        return std::nullopt;
    const auto* status = context.rows.row<StructDetailVisibilityStatus>(
        line.visible ? appearance.visibleStatusKey : appearance.hiddenStatusKey);
    const bool isPlainHidden = !look.appearance && !line.visible;
    if (isPlainHidden || (status && status->status == 0))
        return std::nullopt;
    const bool asHidden = !line.visible || (status && status->status == 2);
    Stroke stroke;
    stroke.pen =
        context.pens.pen(asHidden ? appearance.hiddenLinetypeKey : appearance.visibleLinetypeKey,
                         asHidden ? appearance.hiddenColor : appearance.visibleColor, appearance.lineWeight);
    stroke.provenance = look.provenance;
    if (look.appearance)
        stroke.provenance =
            nearer(asHidden ? context.rows.step(appearance, {"hidden_status", "hidden_linetype",
                                                             "hidden_color", "line_weight"})
                            : context.rows.step(appearance, {"visible_status", "visible_linetype",
                                                             "visible_color", "line_weight"}),
                   look.provenance);
    return stroke;
}

} // namespace

Primitives edgesOf(DrawingContext& context, const ViewScene& scene) {
    std::vector<ViewLine> lines = scene.seen.lines;
    for (const int direction : {0, 1})
        lines = LengthClipping::without(lines, direction, scene.maps[direction].cuts());
    // Neighbouring lines of one object are drawn alike: records are asked once.
    std::map<std::tuple<int, bool>, std::optional<Stroke>> strokes;
    std::map<std::tuple<int, int, bool>, std::vector<Turn>> turns;
    Primitives edges;
    for (const ViewLine& line : lines) {
        auto [known, isNew] = strokes.try_emplace({line.object, line.visible});
        if (isNew)
            known->second = strokeOf(context, scene, line);
        if (!known->second)
            continue;
        if (line.circle >= 0) {
            const Vec2 centre = scene.seen.circles[static_cast<std::size_t>(line.circle)].centre;
            double from = degreesOf(line.a - centre);
            double to = degreesOf(line.b - centre);
            if (std::abs(to - from) > 180)
                (to < from ? to : from) += 360;
            turns[{line.circle, line.object, line.visible}].push_back(
                {std::min(from, to), std::max(from, to)});
            continue;
        }
        Primitive edge;
        edge.purpose = line.kind == ViewLine::kCut ? Primitive::kCutEdge
                       : line.visible              ? Primitive::kVisibleEdge
                                                   : Primitive::kHiddenEdge;
        edge.points = {scene.onSheet(line.a), scene.onSheet(line.b)};
        edge.pen = known->second->pen;
        edge.provenance = known->second->provenance;
        edge.object = line.object;
        edges.push_back(std::move(edge));
    }
    for (auto& [key, pieces] : turns) {
        const auto& [circle, object, visible] = key;
        for (const Turn& turn : joined(std::move(pieces))) {
            const ViewCircle& shape = scene.seen.circles[static_cast<std::size_t>(circle)];
            const Stroke& stroke = *strokes.at({object, visible});
            Primitive arc;
            arc.kind = Primitive::kArc;
            arc.purpose = visible ? Primitive::kVisibleEdge : Primitive::kHiddenEdge;
            arc.points = {scene.onSheet(shape.centre)};
            arc.radius = shape.radius * scene.scale();
            arc.from = turn.from;
            arc.to = turn.to;
            arc.pen = stroke.pen;
            arc.provenance = stroke.provenance;
            arc.object = object;
            edges.push_back(std::move(arc));
        }
    }
    return edges;
}

Primitives breaksOf(DrawingContext& context, const ViewScene& scene) {
    if (!scene.clipping.record || !scene.showsAnything)
        return {};
    Pen pen = context.pens.thin();
    pen.linetype = scene.clipping.linetype;
    return LengthClipping::breakLines(
        scene.seen, scene.maps, scene.clipping, pen,
        nearer(context.rows.step(*scene.clipping.record,
                                 {"along_x", "along_y", "keep_each_side", "interval", "extension",
                                  "clipping_type", "linetype", "clip_oblique_lines", "gap"}),
               scene.chain));
}
