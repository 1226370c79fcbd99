#include "drawing/Figures.h"

#include <cmath>
#include <numbers>

Primitive Figures::line(std::vector<Vec2> points, const Pen& pen, Primitive::ePurpose purpose,
                        const ProvenancePtr& provenance, int object) {
    Primitive primitive;
    primitive.points = std::move(points);
    primitive.pen = pen;
    primitive.purpose = purpose;
    primitive.provenance = provenance;
    primitive.object = object;
    return primitive;
}

Primitive Figures::circle(Vec2 centre, double radius, const Pen& pen, Primitive::ePurpose purpose,
                          const ProvenancePtr& provenance, int object) {
    Primitive primitive = line({centre}, pen, purpose, provenance, object);
    primitive.kind = Primitive::kArc;
    primitive.radius = radius;
    primitive.to = 360;
    return primitive;
}

Primitive Figures::text(const Pens& pens, Vec2 middle, double size, const std::string& words,
                        Primitive::ePurpose purpose, const ProvenancePtr& provenance, int object,
                        double degrees) {
    Primitive primitive = line({middle}, pens.thin(), purpose, provenance, object);
    primitive.kind = Primitive::kText;
    primitive.text = words;
    primitive.style = {pens.settings().textFont, size, 7};
    primitive.turned = std::remainder(degrees, 180);
    if (primitive.turned <= -90)
        primitive.turned += 180;
    const double angle = primitive.turned * std::numbers::pi / 180;
    const Vec2 along = {std::cos(angle), std::sin(angle)};
    primitive.points[0] = middle - along * (primitive.textWidth() / 2) - Vec2{-along.v, along.u} * (size / 2);
    return primitive;
}
