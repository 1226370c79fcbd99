#pragma once

#include "drawing/ViewScene.h"

/// The further condition of a point selection, within its tolerance. One that is not there allows all.
class PointRestriction {
public:
    PointRestriction(DrawingContext& context, const ViewScene& scene, std::int32_t key);

    /// Whether a point of an object is taken where this direction of the view is measured. Of the same side
    /// as the first one that was, where that is asked.
    bool allows(const PartObject& object, const Vec3& point, Vec2 direction);
    /// Points of one selection that lie this near along the measured direction are one place, in millimetres.
    double sameness() const;

private:
    bool isAcross(const PartObject& object, const Vec3& point) const;
    bool runsAcross(const PartObject& object, Vec2 direction) const;
    bool crossesAxis(const PartObject& object) const;
    bool isOnSide(const Vec3& point);

    const DrawingContext& m_context;
    const ViewScene& m_scene;
    const StructDetGeometricRestrictions* m_record;
    int m_side = 0; ///< of the first point: before or behind the middle of the main part
};
