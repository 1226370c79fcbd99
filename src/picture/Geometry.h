#pragma once

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

/// A point or direction in a plane. Millimetres.
struct Vec2 {
    double u = 0.0;
    double v = 0.0;

    Vec2 operator+(Vec2 o) const { return {u + o.u, v + o.v}; }
    Vec2 operator-(Vec2 o) const { return {u - o.u, v - o.v}; }
    Vec2 operator*(double f) const { return {u * f, v * f}; }
    double length() const { return std::hypot(u, v); }
    bool operator==(const Vec2&) const = default;
};

inline double cross(Vec2 a, Vec2 b) {
    return a.u * b.v - a.v * b.u;
}

/// A point or direction in space. Millimetres.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
    Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec3 operator*(double f) const { return {x * f, y * f, z * f}; }
    double length() const { return std::hypot(x, y, z); }
    /// In the same direction with length 1; itself where it has none.
    Vec3 unit() const { return length() > 0 ? *this * (1 / length()) : *this; }
    bool operator==(const Vec3&) const = default;
};

inline double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// A system of right-handed axes of length 1. In a view `x` points to the right, `z` up and `y` away from
/// who looks.
struct Frame {
    Vec3 origin;
    Vec3 x = {1, 0, 0};
    Vec3 y = {0, 1, 0};
    Vec3 z = {0, 0, 1};

    /// A system whose z axis points along a direction; its x axis lies level where that can be.
    static Frame along(const Vec3& origin, const Vec3& direction);

    /// A point of the system in the surrounding one, and back.
    Vec3 out(const Vec3& p) const { return origin + turned(p); }
    Vec3 in(const Vec3& p) const {
        const Vec3 d = p - origin;
        return {dot(d, x), dot(d, y), dot(d, z)};
    }
    /// A direction of the system in the surrounding one.
    Vec3 turned(const Vec3& d) const { return x * d.x + y * d.y + z * d.z; }
};

/// The smallest box around what was added.
struct Box3 {
    Vec3 low = {1e300, 1e300, 1e300};
    Vec3 high = {-1e300, -1e300, -1e300};

    bool isEmpty() const { return low.x > high.x; }
    void add(const Vec3& p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    void add(const Box3& o) {
        if (!o.isEmpty()) {
            add(o.low);
            add(o.high);
        }
    }
    Vec3 middle() const { return (low + high) * 0.5; }
    /// How far the two are apart; 0 where they touch.
    double distance(const Box3& o) const {
        const auto gap = [](double a0, double a1, double b0, double b1) {
            return std::max({0.0, b0 - a1, a0 - b1});
        };
        return Vec3{gap(low.x, high.x, o.low.x, o.high.x), gap(low.y, high.y, o.low.y, o.high.y),
                    gap(low.z, high.z, o.low.z, o.high.z)}
            .length();
    }
    /// Around the eight corners as `frame` sees them.
    Box3 seenFrom(const Frame& frame) const;
};

/// The smallest rectangle around what was added.
struct Box2 {
    Vec2 low = {1e300, 1e300};
    Vec2 high = {-1e300, -1e300};

    bool isEmpty() const { return low.u > high.u; }
    void add(Vec2 p) {
        low = {std::min(low.u, p.u), std::min(low.v, p.v)};
        high = {std::max(high.u, p.u), std::max(high.v, p.v)};
    }
    void add(const Box2& o) {
        if (!o.isEmpty()) {
            add(o.low);
            add(o.high);
        }
    }
    Vec2 middle() const { return (low + high) * 0.5; }
    double width() const { return isEmpty() ? 0 : high.u - low.u; }
    double height() const { return isEmpty() ? 0 : high.v - low.v; }
};

using Loop2 = std::vector<Vec2>;
using Loop3 = std::vector<Vec3>;

/// Whether the point lies within the loop.
bool encloses(const Loop2& loop, Vec2 point);
/// Whether the point lies inside of an odd number of the loops.
bool contains(const std::vector<Loop2>& loops, Vec2 point);

/// Where the segments a0-a1 and b0-b1 cross, as the part of the way from a0 to a1; below 0 where they do not,
/// or are parallel.
double crossing(Vec2 a0, Vec2 a1, Vec2 b0, Vec2 b1);

/// The parts of the segment a-b inside of the loops, as pairs of parts of the way.
std::vector<std::pair<double, double>> insideParts(const std::vector<Loop2>& loops, Vec2 a, Vec2 b);
