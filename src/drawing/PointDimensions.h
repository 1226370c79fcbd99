#pragma once

#include "drawing/DimensionLines.h"
#include "drawing/DimensionPoints.h"

/// Dimensions that stand at their points and have no dimension line. Each gives its figures on the sheet.
class PointDimensions {
public:
    /// `title` is that of the request, filled in.
    PointDimensions(DrawingContext& context, const ViewScene& scene, ProvenancePtr provenance,
                    std::string title)
        : m_context(context), m_scene(scene), m_provenance(std::move(provenance)), m_title(std::move(title)) {
    }

    /// The radius of the first hole or bolt that is looked along; equal ones are not repeated.
    Primitives radius(const std::vector<DimensionPoint>& points);
    /// The angle of the first sloping member with the horizontal.
    Primitives slope(const std::vector<DimensionPoint>& points);
    /// Levels at the left of a view that shows heights.
    Primitives levels(const std::vector<DimensionPoint>& points);

private:
    void line(std::vector<Vec2> points);
    void text(Vec2 middle, const std::string& words);
    /// Whether a visible edge passes such a text.
    bool isCrossed(Vec2 middle, const std::string& words) const;
    std::optional<Vec2> leftEnd(const PartObject& object) const;
    double level(const Vec3& point) const;

    DrawingContext& m_context;
    const ViewScene& m_scene;
    ProvenancePtr m_provenance;
    std::string m_title;
    Primitives m_figures;
};
