#include "drawing/Primitive.h"

#include <numbers>

bool Primitive::operator==(const Primitive& o) const {
    const auto sameSteps = [](const ProvenancePtr& a, const ProvenancePtr& b) {
        return a == b || (a && b && *a == *b);
    };
    return kind == o.kind && purpose == o.purpose && points == o.points && radius == o.radius &&
           from == o.from && to == o.to && pen == o.pen && style == o.style && text == o.text &&
           turned == o.turned && object == o.object && sameSteps(provenance, o.provenance);
}

double Primitive::textWidth() const {
    constexpr double kWide = 0.72; // of the height of capitals, as sans serif letters mostly are
    std::size_t letters = 0;
    for (const char c : text)
        letters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return static_cast<double>(letters) * style.size * (style.bold ? kWide * 1.1 : kWide);
}

Box2 Primitive::box() const {
    Box2 box;
    for (const Vec2 p : points)
        box.add(p);
    if (kind == kArc) {
        box.add(points[0] - Vec2{radius, radius});
        box.add(points[0] + Vec2{radius, radius});
    }
    if (kind == kText) {
        const double angle = turned * std::numbers::pi / 180;
        const Vec2 along = {std::cos(angle), std::sin(angle)};
        const Vec2 up = {-along.v, along.u};
        box.add(points[0] + along * textWidth());
        box.add(points[0] + up * style.size);
        box.add(points[0] + along * textWidth() + up * style.size);
    }
    return box;
}

void Primitive::move(Vec2 by) {
    for (Vec2& p : points)
        p = p + by;
}

Box2 boxOf(const Primitives& primitives) {
    Box2 box;
    for (const Primitive& primitive : primitives)
        box.add(primitive.box());
    return box;
}

void moveAll(Primitives& primitives, Vec2 by) {
    for (Primitive& primitive : primitives)
        primitive.move(by);
}

std::vector<const Primitive*> Drawing::all() const {
    std::vector<const Primitive*> all;
    for (const ViewPicture& view : views)
        for (const Primitive& primitive : view.primitives)
            all.push_back(&primitive);
    for (const Primitive& primitive : sheet)
        all.push_back(&primitive);
    return all;
}

Box2 Drawing::box() const {
    Box2 box = boxOf(sheet);
    for (const ViewPicture& view : views)
        box.add(view.box);
    return box;
}
