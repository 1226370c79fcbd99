#include "picture/Primitive.h"

#include <array>
#include <numbers>

bool Primitive::operator==(const Primitive& o) const {
    const auto sameSteps = [](const ProvenancePtr& a, const ProvenancePtr& b) {
        return a == b || (a && b && *a == *b);
    };
    return kind == o.kind && purpose == o.purpose && points == o.points && radius == o.radius &&
           from == o.from && to == o.to && pen == o.pen && style == o.style && text == o.text &&
           turned == o.turned && object == o.object && sameSteps(provenance, o.provenance);
}

std::vector<double> Pen::dashes() const {
    std::vector<double> lengths;
    if (!linetype)
        return lengths;
    for (const LinetypeElement& element : linetype->pattern) {
        const bool isGap = element.kind == LinetypeElement::kGap;
        if (element.kind == LinetypeElement::kShape || element.kind == LinetypeElement::kText)
            continue;
        const double length = element.kind == LinetypeElement::kDot ? 0.1 : element.length;
        if (lengths.size() % 2 == (isGap ? 1u : 0u))
            lengths.push_back(length * patternScale);
        else if (!lengths.empty())
            lengths.back() += length * patternScale;
    }
    if (lengths.size() < 2)
        return {};
    if (lengths.size() % 2)
        lengths.push_back(0);
    return lengths;
}

double Primitive::textWidth() const {
    // Widths of sans serif letters from blank to tilde, in thousandths of the size of the font.
    static constexpr std::array<short, 95> kWidths = {
        278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
        556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
        611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
        667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
        222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};
    constexpr int kOther = 600;
    int width = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte <= '~')
            width += kWidths[byte - static_cast<unsigned char>(' ')];
        else if ((byte & 0xC0) != 0x80)
            width += kOther;
    }
    return width / 1000.0 / kCapitals * style.size * (style.bold ? 1.08 : 1.0);
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

bool Primitive::isOnSheet() const {
    constexpr double kMost = 1e6; // mm
    const auto isSmall = [](double value) { return std::abs(value) < kMost; };
    return std::ranges::all_of(points, [&](Vec2 p) { return isSmall(p.u) && isSmall(p.v); }) &&
           isSmall(radius) && isSmall(from) && isSmall(to) && isSmall(turned) && isSmall(style.size) &&
           isSmall(textWidth());
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
