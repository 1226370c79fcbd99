#include "picture/Geometry.h"

Frame Frame::along(const Vec3& origin, const Vec3& direction) {
    const Vec3 z = direction.unit();
    const Vec3 x =
        (std::abs(z.z) < 0.9 ? cross(Vec3{0, 0, 1}, z) : Vec3{1, 0, 0} - z * dot(z, {1, 0, 0})).unit();
    return {origin, x, cross(z, x), z};
}

Box3 Box3::seenFrom(const Frame& frame) const {
    Box3 seen;
    if (!isEmpty())
        for (int corner = 0; corner < 8; ++corner)
            seen.add(frame.in(
                {corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z}));
    return seen;
}

bool encloses(const Loop2& loop, Vec2 point) {
    bool inside = false;
    for (std::size_t i = 0, last = loop.size() - 1; i < loop.size(); last = i++) {
        const Vec2 a = loop[i];
        const Vec2 b = loop[last];
        if ((a.v > point.v) != (b.v > point.v) && point.u < (b.u - a.u) * (point.v - a.v) / (b.v - a.v) + a.u)
            inside = !inside;
    }
    return inside;
}

bool contains(const std::vector<Loop2>& loops, Vec2 point) {
    return std::ranges::count_if(loops, [&](const Loop2& loop) { return encloses(loop, point); }) % 2 != 0;
}

double crossing(Vec2 a0, Vec2 a1, Vec2 b0, Vec2 b1) {
    const Vec2 a = a1 - a0;
    const Vec2 b = b1 - b0;
    const double area = cross(a, b);
    const double lengths = (a.u * a.u + a.v * a.v) * (b.u * b.u + b.v * b.v);
    if (area * area <= 1e-24 * lengths)
        return -1;
    const double onA = cross(b0 - a0, b) / area;
    const double onB = cross(b0 - a0, a) / area;
    const bool meet = onA >= -1e-9 && onA <= 1 + 1e-9 && onB >= -1e-9 && onB <= 1 + 1e-9;
    return meet ? std::clamp(onA, 0.0, 1.0) : -1;
}

std::vector<std::pair<double, double>> insideParts(const std::vector<Loop2>& loops, Vec2 a, Vec2 b) {
    std::vector<double> cuts = {0, 1};
    for (const Loop2& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i)
            if (const double at = crossing(a, b, loop[i], loop[(i + 1) % loop.size()]); at >= 0)
                cuts.push_back(at);
    std::ranges::sort(cuts);
    std::vector<std::pair<double, double>> parts;
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        if (cuts[i] - cuts[i - 1] < 1e-9 || !contains(loops, a + (b - a) * ((cuts[i] + cuts[i - 1]) / 2)))
            continue;
        if (!parts.empty() && parts.back().second == cuts[i - 1])
            parts.back().second = cuts[i];
        else
            parts.emplace_back(cuts[i - 1], cuts[i]);
    }
    return parts;
}
