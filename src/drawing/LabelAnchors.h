#pragma once

#include "drawing/ViewScene.h"

/// Where labels can point to.
class LabelAnchors {
public:
    /// `drawn` is what the view shows already; it must outlive the object.
    LabelAnchors(const DrawingContext& context, const ViewScene& scene, const Primitives& drawn);

    /// The points of an object that a leader may end at, the best one first; none where it is not seen. Of
    /// something round, that is looked along, they are centres.
    std::vector<Vec2> of(int object) const;
    /// The direction of a long object on the sheet, of length 1 and read from below or from the right;
    /// nothing where it is not longer than wide.
    std::optional<Vec2> directionOf(int object) const;
    /// The box of what is seen of the object.
    Box2 boxOf(int object) const;

private:
    std::vector<Vec2> alongWeld(const PartObject& weld) const;

    const DrawingContext& m_context;
    const ViewScene& m_scene;
    std::map<int, std::vector<const Primitive*>> m_edges; ///< visible ones
};
