#include "drawing/LabelAnchors.h"

#include <numbers>

LabelAnchors::LabelAnchors(const DrawingContext& context, const ViewScene& scene, const Primitives& drawn)
    : m_context(context), m_scene(scene) {
    for (const Primitive& primitive : drawn)
        if (primitive.object >= 0 &&
            (primitive.purpose == Primitive::kVisibleEdge || primitive.purpose == Primitive::kCutEdge))
            m_edges[primitive.object].push_back(&primitive);
}

std::vector<Vec2> LabelAnchors::of(int index) const {
    const PartObject& object = m_context.object(index);
    if (object.type == eObjectType::kCut && !object.box.isEmpty())
        return {m_scene.onSheet(object.start)};
    if (object.type == eObjectType::kLevel) {
        const bool isUpright = m_scene.camera.frame.z.z > 0.99;
        const double height = m_scene.camera.flat(object.start).v;
        if (object.box.isEmpty() || !isUpright || height < m_scene.camera.window.low.v ||
            height > m_scene.camera.window.high.v)
            return {};
        return {{m_scene.outline.low.u, m_scene.onSheet(object.start).v}};
    }
    const auto found = m_edges.find(index);
    if (found == m_edges.end())
        return object.type == eObjectType::kWeld ? alongWeld(object) : std::vector<Vec2>();
    constexpr std::size_t kMost = 12;
    if (!object.centres.empty()) {
        std::vector<Vec2> centres;
        const std::size_t step = object.centres.size() / kMost + 1;
        for (std::size_t i = 0; i < object.centres.size(); i += step)
            if (const Vec2 flat = m_scene.camera.flat(object.centres[i]);
                contains({{m_scene.camera.window.low,
                           {m_scene.camera.window.high.u, m_scene.camera.window.low.v},
                           m_scene.camera.window.high,
                           {m_scene.camera.window.low.u, m_scene.camera.window.high.v}}},
                         flat))
                centres.push_back(m_scene.onSheet(flat));
        return centres;
    }
    // On its two longest edges, from the middle outwards.
    std::vector<const Primitive*> edges = found->second;
    const auto length = [](const Primitive* edge) {
        return edge->kind == Primitive::kLine ? (edge->points[1] - edge->points[0]).length() : edge->radius;
    };
    std::ranges::stable_sort(edges, std::greater(), length);
    if (edges.size() > 3)
        edges.resize(3);
    std::vector<Vec2> anchors;
    for (const double part : {0.5, 0.3, 0.7})
        for (const Primitive* edge : edges) {
            const double angle = (edge->from + (edge->to - edge->from) * part) * std::numbers::pi / 180;
            anchors.push_back(edge->kind == Primitive::kLine
                                  ? edge->points[0] + (edge->points[1] - edge->points[0]) * part
                                  : edge->points[0] + Vec2{std::cos(angle), std::sin(angle)} * edge->radius);
        }
    return anchors;
}

// A weld in the corner of two parts has no line of its own.
std::vector<Vec2> LabelAnchors::alongWeld(const PartObject& weld) const {
    const ViewCamera& camera = m_scene.camera;
    const Box2& window = camera.window;
    std::vector<Vec2> anchors;
    for (const Loop3& path : weld.paths)
        for (std::size_t i = 1; i < path.size(); ++i) {
            const Vec3 middle = (path[i - 1] + path[i]) * 0.5;
            const Vec2 flat = camera.flat(middle);
            const double depth = camera.depth(middle);
            if (flat.u >= window.low.u && flat.u <= window.high.u && flat.v >= window.low.v &&
                flat.v <= window.high.v && depth >= camera.nearDepth && depth <= camera.farDepth)
                anchors.push_back(m_scene.onSheet(flat));
        }
    return anchors;
}

std::optional<Vec2> LabelAnchors::directionOf(int index) const {
    const PartObject& object = m_context.object(index);
    const auto found = m_edges.find(index);
    if (object.type != eObjectType::kProfile || found == m_edges.end())
        return std::nullopt;
    Vec2 d = m_scene.onSheet(object.end) - m_scene.onSheet(object.start);
    if (d.length() < 1)
        return std::nullopt;
    d = d * (1 / d.length());
    if (d.u < -1e-9 || (std::abs(d.u) <= 1e-9 && d.v < 0))
        d = d * -1;
    const auto reach = [&](Vec2 axis) {
        Vec2 range = {1e300, -1e300};
        for (const Primitive* edge : found->second)
            for (const Vec2 p : edge->points)
                range = {std::min(range.u, p.u * axis.u + p.v * axis.v),
                         std::max(range.v, p.u * axis.u + p.v * axis.v)};
        return range.v - range.u;
    };
    return reach(d) > 2 * reach({-d.v, d.u}) ? std::optional(d) : std::nullopt;
}

Box2 LabelAnchors::boxOf(int index) const {
    Box2 box;
    if (const auto found = m_edges.find(index); found != m_edges.end())
        for (const Primitive* edge : found->second)
            box.add(edge->box());
    return box;
}
