#include "drawing/PointDimensions.h"

#include "data/text/TextFields.h"
#include "drawing/Figures.h"
#include "drawing/LabelText.h"

#include <array>
#include <numbers>

void PointDimensions::line(std::vector<Vec2> points) {
    m_figures.push_back(
        Figures::line(std::move(points), m_context.pens.thin(), Primitive::kDimension, m_provenance));
}

void PointDimensions::text(Vec2 middle, const std::string& words) {
    m_figures.push_back(
        Figures::text(m_context.pens, middle, kDimensionText, words, Primitive::kDimension, m_provenance));
}

Primitives PointDimensions::radius(const std::vector<DimensionPoint>& points) {
    for (const DimensionPoint& point : points) {
        const PartObject& object = m_context.object(point.object);
        if (object.diameter <= 0 || !m_scene.looksAlong(object.axis))
            continue;
        const Vec2 at = m_scene.onSheet(point.flat);
        const Vec2 rim = at + Vec2{0.7071, 0.7071} * (object.diameter / 2 * m_scene.scale());
        const Vec2 end = rim + Vec2{4, 4};
        line({rim, end, end + Vec2{6, 0}});
        text(end + Vec2{4, kDimensionText},
             (m_title.empty() ? "R" : m_title) + LabelText::length(object.diameter / 2, m_context.rows));
        break; // equal ones are not repeated
    }
    return std::move(m_figures);
}

// The left end of the axis, as far as the view shows it.
std::optional<Vec2> PointDimensions::leftEnd(const PartObject& object) const {
    const Box2& window = m_scene.camera.window;
    Vec2 a = m_scene.camera.flat(object.start);
    Vec2 b = m_scene.camera.flat(object.end);
    if (b.u < a.u)
        std::swap(a, b);
    const Loop2 frame = {
        window.low, {window.high.u, window.low.v}, window.high, {window.low.u, window.high.v}};
    const auto inside = insideParts({frame}, a, b);
    return inside.empty() ? std::nullopt : std::optional(a + (b - a) * inside.front().first);
}

bool PointDimensions::isCrossed(Vec2 middle, const std::string& words) const {
    const Primitive text =
        Figures::text(m_context.pens, middle, kDimensionText, words, Primitive::kDimension, m_provenance);
    const Box2 box = text.box();
    const Loop2 around = {box.low, {box.high.u, box.low.v}, box.high, {box.low.u, box.high.v}};
    return std::ranges::any_of(m_scene.seen.lines, [&](const ViewLine& edge) {
        return edge.visible &&
               !insideParts({around}, m_scene.onSheet(edge.a), m_scene.onSheet(edge.b)).empty();
    });
}

Primitives PointDimensions::slope(const std::vector<DimensionPoint>& points) {
    for (const DimensionPoint& point : points) {
        const PartObject& object = m_context.object(point.object);
        Vec2 axis = m_scene.camera.flat(object.end) - m_scene.camera.flat(object.start);
        if (axis.length() < 1)
            continue;
        axis = axis.u < 0 ? axis * -1 : axis;
        const double degrees = std::atan2(axis.v, axis.u) * 180 / std::numbers::pi;
        if (std::abs(degrees) < 0.5 || std::abs(degrees) > 89.5)
            continue;
        const std::optional<Vec2> seen = leftEnd(object);
        if (!seen)
            continue;
        const Vec2 at = m_scene.onSheet(*seen);
        const std::string words = LabelText::number(std::abs(degrees), 1) + "°";
        const double half = degrees / 2 * std::numbers::pi / 180;
        const auto middle = [&](double radius) {
            return at + Vec2{std::cos(half), std::sin(half)} * (radius + 8);
        };
        constexpr std::array kRadii = {18.0, 26.0, 34.0, 12.0};
        const auto* clear =
            std::ranges::find_if(kRadii, [&](double radius) { return !isCrossed(middle(radius), words); });
        const double radius = clear == kRadii.end() ? kRadii[0] : *clear;
        Primitive arc =
            Figures::circle(at, radius, m_context.pens.thin(), Primitive::kDimension, m_provenance);
        arc.from = std::min(degrees, 0.0);
        arc.to = std::max(degrees, 0.0);
        m_figures.push_back(arc);
        line({at, at + Vec2{radius + 4, 0}});
        text(middle(radius), words);
        break;
    }
    return std::move(m_figures);
}

Primitives PointDimensions::levels(const std::vector<DimensionPoint>& points) {
    if (m_scene.camera.frame.z.z < 0.99)
        return {};
    // Levels that are drawn have their marks there.
    const bool hasLevels = std::ranges::any_of(m_scene.looks, [&](const auto& each) {
        return each.second.drawn && m_context.object(each.first).type == eObjectType::kLevel;
    });
    const double beside = hasLevels ? 18 : 6;
    double before = -1e300; // on the sheet
    for (const DimensionPoint& point : points) {
        Vec3 top = point.model; // steel is measured at its upper side
        const PartObject& object = m_context.object(point.object);
        if (object.type == eObjectType::kProfile && !object.box.isEmpty())
            top.z = object.box.high.z;
        const Vec2 at = {m_scene.outline.low.u - beside, m_scene.onSheet(top).v};
        if (std::abs(at.v - before) < 2 * kDimensionText)
            continue;
        before = at.v;
        line({at, at + Vec2{-1.8, 2.6}, at + Vec2{1.8, 2.6}, at});
        line({at + Vec2{4, 0}, at - Vec2{17, 0}});
        const std::string words =
            (m_title.empty() ? "" : m_title + " ") + LabelText::height(level(top), m_context.rows);
        text(at + Vec2{-3.5, kDimensionText}, words);
        m_figures.back().move({-m_figures.back().textWidth() / 2, 0});
    }
    return std::move(m_figures);
}

// Above the zero of the building, which the part file tells in metres for its own zero.
double PointDimensions::level(const Vec3& point) const {
    const auto own = m_context.part.values.find("elevation");
    const auto zero = own == m_context.part.values.end() ? std::nullopt : TextFields::toReal(own->second);
    return zero.value_or(0.0) * 1000 + point.z;
}
