#include "drawing/Solid.h"

#include <array>
#include <map>
#include <numbers>

namespace {

constexpr double kSame = 1e-6;

// Two directions square to the axis.
std::pair<Vec3, Vec3> squareTo(const Vec3& axis, const Vec3& wanted) {
    Vec3 first = wanted - axis * dot(wanted, axis);
    if (first.length() < kSame)
        first = std::abs(axis.x) < 0.9 ? cross(axis, {1, 0, 0}) : cross(axis, {0, 1, 0});
    first = first.unit();
    return {first, cross(axis, first)};
}

// Square to each side of a loop, away from the solid, which is inside of an outer loop and outside of a hole.
std::vector<Vec2> outwardOf(const Loop2& corners, bool isOuter) {
    double area = 0;
    for (std::size_t i = 0; i < corners.size(); ++i)
        area += cross(corners[i], corners[(i + 1) % corners.size()]);
    const double turn = (area > 0) == isOuter ? 1 : -1;
    std::vector<Vec2> normals;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vec2 d = corners[(i + 1) % corners.size()] - corners[i];
        const double length = d.length() > 0 ? d.length() : 1;
        normals.push_back(Vec2{d.v, -d.u} * (turn / length));
    }
    return normals;
}

// Around a hole, in the plane of the two directions square to its axis.
Loop2 rimOf(const Drill& drill) {
    Loop2 rim;
    for (int i = 0; i < Solid::kStrips; ++i) {
        const double angle = 2 * std::numbers::pi * (i + 0.5) / Solid::kStrips;
        const Vec2 d = {std::cos(angle), std::sin(angle)};
        rim.push_back(d * (drill.diameter / 2) + Vec2{std::copysign(drill.slot / 2, d.u), 0});
    }
    return rim;
}

// The line an edge lies on, and where on it, so that edges on one line can be compared.
struct OnLine {
    std::array<long, 6> line;
    Vec3 direction;
    Vec3 foot;
    double from;
    double to;
};

OnLine onLine(const Edge& edge) {
    Vec3 d = (edge.b - edge.a).unit();
    if (d.x < -kSame || (std::abs(d.x) <= kSame && (d.y < -kSame || (std::abs(d.y) <= kSame && d.z < 0))))
        d = d * -1;
    const Vec3 foot = edge.a - d * dot(edge.a, d);
    // The offset keeps round numbers away from where rounding changes.
    const auto rounded = [](double value, double steps) { return std::lround(value * steps + 0.237); };
    const double a = dot(edge.a, d);
    const double b = dot(edge.b, d);
    return {{rounded(d.x, 1e4), rounded(d.y, 1e4), rounded(d.z, 1e4), rounded(foot.x, 100),
             rounded(foot.y, 100), rounded(foot.z, 100)},
            d,
            foot,
            std::min(a, b),
            std::max(a, b)};
}

using OnOneLine = std::vector<std::pair<OnLine, const Edge*>>;

// Of faces that meet in a line: what goes on beyond it in one plane, or stands face to face, is no edge.
void meet(std::vector<Vec3>& normals, const Vec3& normal) {
    const auto parallel =
        std::ranges::find_if(normals, [&](const Vec3& n) { return std::abs(dot(n, normal)) > 1 - kSame; });
    if (parallel != normals.end())
        normals.erase(parallel);
    else
        normals.push_back(normal);
}

// The edges that are left of those on one line.
void joinLine(const OnOneLine& places, std::vector<Edge>& kept) {
    std::vector<double> stops;
    for (const auto& [place, edge] : places) {
        stops.push_back(place.from);
        stops.push_back(place.to);
    }
    std::ranges::sort(stops);
    for (std::size_t i = 1; i < stops.size(); ++i) {
        const double middle = (stops[i] + stops[i - 1]) / 2;
        std::vector<Vec3> normals;
        for (const auto& [place, edge] : places)
            if (stops[i] - stops[i - 1] > 1e-3 && place.from < middle && place.to > middle) {
                meet(normals, edge->normalA);
                meet(normals, edge->normalB);
            }
        const OnLine& place = places.front().first;
        if (!normals.empty())
            kept.push_back({place.foot + place.direction * stops[i - 1],
                            place.foot + place.direction * stops[i], normals.front(), normals.back(), false,
                            -1});
    }
}

} // namespace

Outline::Piece Outline::circle(Vec2 centre, double radius) {
    Piece piece;
    piece.round = true;
    for (int i = 0; i < Solid::kStrips; ++i) {
        const double angle = 2 * std::numbers::pi * i / Solid::kStrips;
        piece.corners.push_back(centre + Vec2{std::cos(angle), std::sin(angle)} * radius);
    }
    return piece;
}

Outline Outline::rectangle(Vec2 low, Vec2 high) {
    return {{{{low, {high.u, low.v}, high, {low.u, high.v}}, false, {}}}};
}

std::vector<Loop2> Outline::loops() const {
    std::vector<Loop2> all;
    for (const Piece& piece : pieces)
        all.push_back(piece.corners);
    return all;
}

Box3 Solid::box() const {
    Box3 box;
    for (const Face& face : faces)
        for (const Loop3& loop : face.loops)
            for (const Vec3& corner : loop)
                box.add(corner);
    for (const Edge& edge : edges) {
        box.add(edge.a);
        box.add(edge.b);
    }
    return box;
}

void Solid::addPrism(const Outline& outline, const Frame& frame, double from, double to, double slopeFrom,
                     double slopeTo) {
    const auto at = [&](Vec2 p, bool end) {
        return frame.out({p.u, p.v, end ? to + slopeTo * p.u : from + slopeFrom * p.u});
    };
    Face start{{}, frame.turned(Vec3{slopeFrom, 0, -1}.unit())};
    Face end{{}, frame.turned(Vec3{-slopeTo, 0, 1}.unit())};
    for (const Outline::Piece& piece : outline.pieces) {
        const std::size_t count = piece.corners.size();
        const std::vector<Vec2> outward = outwardOf(piece.corners, &piece == &outline.pieces.front());
        int round[2] = {-1, -1};
        if (piece.round && slopeFrom == 0 && slopeTo == 0) {
            const Vec2 middle = (piece.corners[0] + piece.corners[count / 2]) * 0.5;
            for (const bool isEnd : {false, true}) {
                round[isEnd] = static_cast<int>(circles.size());
                circles.push_back({at(middle, isEnd), frame.z, (piece.corners[0] - middle).length()});
            }
        }
        start.loops.emplace_back();
        end.loops.emplace_back();
        for (std::size_t i = 0; i < count; ++i) {
            const Vec2 p = piece.corners[i];
            const Vec2 q = piece.corners[(i + 1) % count];
            const Vec2 before = outward[(i + count - 1) % count];
            const Vec3 normal = frame.turned({outward[i].u, outward[i].v, 0});
            start.loops.back().push_back(at(p, false));
            end.loops.back().push_back(at(p, true));
            faces.push_back({{{at(p, false), at(q, false), at(q, true), at(p, true)}}, normal});
            edges.push_back({at(p, false), at(q, false), start.normal, normal, false, round[0]});
            edges.push_back({at(p, true), at(q, true), end.normal, normal, false, round[1]});
            edges.push_back({at(p, false), at(p, true), frame.turned({before.u, before.v, 0}), normal,
                             piece.isSmooth(i), -1});
        }
    }
    faces.push_back(std::move(start));
    faces.push_back(std::move(end));
}

bool Solid::drill(const Drill& drill, Solid& hole) {
    const auto [first, second] = squareTo(drill.axis, drill.along);
    const auto out = [&, f = first, s = second](Vec2 p, double depth) {
        return drill.at + f * p.u + s * p.v + drill.axis * depth;
    };
    const Loop2 rim = rimOf(drill);
    std::vector<double> depths;
    for (Face& face : faces) {
        if (face.loops.empty() || std::abs(dot(face.normal, drill.axis)) < 1 - kSame)
            continue;
        const double depth = dot(face.loops[0][0] - drill.at, drill.axis);
        std::vector<Loop2> loops;
        for (const Loop3& loop : face.loops) {
            loops.emplace_back();
            for (const Vec3& corner : loop)
                loops.back().push_back({dot(corner - drill.at, first), dot(corner - drill.at, second)});
        }
        if (std::abs(depth) > drill.reach ||
            !std::ranges::all_of(rim, [&](Vec2 p) { return contains(loops, p); }))
            continue;
        Loop3 opening;
        for (const Vec2 p : rim)
            opening.push_back(out(p, depth));
        face.loops.push_back(opening);
        const int circle = drill.slot > 0 ? -1 : static_cast<int>(hole.circles.size());
        if (drill.slot <= 0)
            hole.circles.push_back({out({}, depth), drill.axis, drill.diameter / 2});
        for (std::size_t i = 0; i < opening.size(); ++i)
            hole.edges.push_back(
                {opening[i], opening[(i + 1) % opening.size()], face.normal, face.normal, false, circle});
        depths.push_back(depth);
    }
    if (depths.empty())
        return false;
    const auto [low, high] = std::ranges::minmax(depths);
    for (std::size_t i = 0; i < rim.size(); ++i) {
        const Vec2 before = rim[(i + rim.size() - 1) % rim.size()];
        const Vec2 next = rim[(i + 1) % rim.size()];
        const auto inward = [&, f = first, s = second](Vec2 from, Vec2 to) {
            return (f * -(to.v - from.v) + s * (to.u - from.u)).unit();
        };
        faces.push_back(
            {{{out(rim[i], low), out(next, low), out(next, high), out(rim[i], high)}}, inward(rim[i], next)});
        hole.edges.push_back(
            {out(rim[i], low), out(rim[i], high), inward(before, rim[i]), inward(rim[i], next), true, -1});
    }
    return true;
}

void Solid::joinPlanes() {
    std::map<std::array<long, 6>, OnOneLine> lines;
    std::vector<Edge> kept;
    for (const Edge& edge : edges)
        if (edge.circle < 0 && !edge.smooth) {
            const OnLine place = onLine(edge);
            lines[place.line].emplace_back(place, &edge);
        } else {
            kept.push_back(edge);
        }
    for (const auto& [line, places] : lines)
        if (places.size() == 1)
            kept.push_back(*places.front().second);
        else
            joinLine(places, kept);
    edges = std::move(kept);
}
