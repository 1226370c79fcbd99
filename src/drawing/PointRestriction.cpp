#include "drawing/PointRestriction.h"

namespace {

enum eRestriction { kNone, kSameLine, kSameLevel, kSameSide, kPerpendicular, kCrossingAxis };
constexpr double kSamePlace = 0.5; // mm, where no restriction says

} // namespace

PointRestriction::PointRestriction(DrawingContext& context, const ViewScene& scene, std::int32_t key)
    : m_context(context), m_scene(scene), m_record(context.rows.row<StructDetGeometricRestrictions>(key)) {}

bool PointRestriction::allows(const PartObject& object, const Vec3& point, Vec2 direction) {
    if (!m_record || &object == m_context.part.main())
        return true;
    if (m_context.isOverview)
        return m_record->restriction != kCrossingAxis || runsAcross(object, direction);
    switch (m_record->restriction) {
    case kSameSide:
        return isOnSide(point);
    case kPerpendicular:
        return isAcross(object, point);
    case kCrossingAxis:
        return crossesAxis(object);
    default:
        return true;
    }
}

double PointRestriction::sameness() const {
    const bool isSame =
        m_record && (m_record->restriction == kSameLine || m_record->restriction == kSameLevel);
    return isSame ? std::max(m_record->tolerance, 0.0) : kSamePlace;
}

// Whether the point lies in a plane across the main part that bounds the object.
bool PointRestriction::isAcross(const PartObject& object, const Vec3& point) const {
    const PartObject& main = *m_context.part.main();
    Vec2 reach = {1e300, -1e300};
    for (const Edge& edge : object.solid.edges)
        for (const Vec3& p : {edge.a, edge.b})
            reach = {std::min(reach.u, dot(p, main.axis)), std::max(reach.v, dot(p, main.axis))};
    const double at = dot(point, main.axis);
    return reach.u > reach.v ||
           std::min(std::abs(at - reach.u), std::abs(at - reach.v)) <= m_record->tolerance;
}

// No member of an overview is the main one: those that run along what is measured have no place in it.
bool PointRestriction::runsAcross(const PartObject& object, Vec2 direction) const {
    const Vec2 own = m_scene.camera.flat(object.end) - m_scene.camera.flat(object.start);
    constexpr double kAlong = 0.99;
    return object.type != eObjectType::kProfile || own.length() < 1 ||
           std::abs(own.u * direction.u + own.v * direction.v) < kAlong * own.length();
}

// Whether the axis of the object meets that of the main part in the view, between its ends.
bool PointRestriction::crossesAxis(const PartObject& object) const {
    const PartObject& main = *m_context.part.main();
    const ViewCamera& camera = m_scene.camera;
    const Vec2 start = camera.flat(main.start);
    const Vec2 along = camera.flat(main.end) - start;
    const Vec2 own = camera.flat(object.end) - camera.flat(object.start);
    if (object.type != eObjectType::kProfile || along.length() < 1 || own.length() < 1)
        return true; // what has no axis here, or shows its end
    const double area = cross(along, own);
    if (std::abs(area) < 1e-3 * along.length() * own.length())
        return false; // side by side
    const double place = cross(camera.flat(object.start) - start, own) / area * along.length();
    return place >= -m_record->tolerance && place <= along.length() + m_record->tolerance;
}

bool PointRestriction::isOnSide(const Vec3& point) {
    const double before =
        m_scene.camera.depth(point) - m_scene.camera.depth(m_context.part.main()->box.middle());
    const int side = std::abs(before) <= m_record->tolerance ? 0 : before < 0 ? -1 : 1;
    if (m_side == 0)
        m_side = side;
    return side == 0 || side == m_side;
}
