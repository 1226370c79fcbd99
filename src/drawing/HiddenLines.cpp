#include "drawing/HiddenLines.h"

#include "drawing/CutSolid.h"
#include "drawing/FaceGrid.h"
#include "drawing/LineCover.h"

#include <array>
#include <optional>

namespace {

constexpr double kAway = 0.05; // of the normal of a face that clearly looks away

// Keeps of a segment what lies between the two values of a coordinate, which is linear along it.
bool clip(double atA, double atB, double low, double high, double& from, double& to) {
    const double d = atB - atA;
    if (std::abs(d) < 1e-9)
        return atA >= low - 1e-6 && atA <= high + 1e-6 && from < to;
    double first = (low - atA) / d;
    double last = (high - atA) / d;
    if (first > last)
        std::swap(first, last);
    from = std::max(from, first);
    to = std::min(to, last);
    return to - from > 1e-9;
}

class Projection {
public:
    Projection(const SamplePart& part, const ViewCamera& camera) : m_part(part), m_camera(camera) {}

    void add(int index) {
        const PartObject& object = m_part.objects[static_cast<std::size_t>(index)];
        CutSolid cut = cutSolid(object.solid, m_camera);
        const bool hides = !cut.faces.empty();
        for (ViewFace& face : cut.faces)
            m_faces.add(std::move(face));
        std::vector<int> circles;
        for (const Circle3& circle : object.solid.circles) {
            const bool round = std::abs(dot(circle.axis, m_camera.frame.y)) > 1 - 1e-6;
            circles.push_back(round ? static_cast<int>(seen.circles.size()) : -1);
            if (round)
                seen.circles.push_back({m_camera.flat(circle.centre), circle.radius});
        }
        for (const Edge& edge : object.solid.edges) {
            const double a = dot(edge.normalA, m_camera.frame.y);
            const double b = dot(edge.normalB, m_camera.frame.y);
            const bool isSilhouette = (a < -1e-9) != (b < -1e-9);
            if (!edge.smooth || isSilhouette)
                m_segments.push_back({edge.a, edge.b, ViewLine::kEdge, index,
                                      edge.circle < 0 ? -1 : circles[static_cast<std::size_t>(edge.circle)],
                                      hides && std::min(a, b) > kAway});
        }
        for (const Loop3& path : object.paths)
            for (std::size_t i = 1; i < path.size(); ++i)
                m_segments.push_back({path[i - 1], path[i], ViewLine::kPath, index, -1});
        for (const Loop2& loop : cut.loops)
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const Vec2 a = loop[i];
                const Vec2 b = loop[(i + 1) % loop.size()];
                addPiece({a, b, m_camera.nearDepth, true, ViewLine::kCut, index, -1});
            }
        if (!cut.loops.empty())
            seen.cutFaces.emplace_back(index, std::move(cut.loops));
    }

    void finish() {
        m_faces.sort();
        for (const Segment& segment : m_segments)
            addSegment(segment);
        seen.lines = withoutCovered(seen.lines);
    }

    ViewLines seen;

private:
    struct Segment {
        Vec3 a;
        Vec3 b;
        ViewLine::eKind kind;
        int object;
        int circle;
        bool isBehind = false; ///< between two faces that look away: its own solid lies before it
    };

    // The piece of a line inside of the window.
    void addPiece(ViewLine line) {
        double from = 0;
        double to = 1;
        if (!clip(line.a.u, line.b.u, m_camera.window.low.u, m_camera.window.high.u, from, to) ||
            !clip(line.a.v, line.b.v, m_camera.window.low.v, m_camera.window.high.v, from, to))
            return;
        const Vec2 d = line.b - line.a;
        line.b = line.a + d * to;
        line.a = line.a + d * from;
        if ((line.b - line.a).length() > 1e-3)
            seen.lines.push_back(line);
    }

    void addSegment(const Segment& segment) {
        const double depthA = m_camera.depth(segment.a);
        const double depthB = m_camera.depth(segment.b);
        double from = 0;
        double to = 1;
        if (!clip(depthA, depthB, m_camera.nearDepth, m_camera.farDepth, from, to))
            return;
        const Vec2 a = m_camera.flat(segment.a);
        const Vec2 d = m_camera.flat(segment.b) - a;
        if (d.length() < 1e-3)
            return;
        const auto at = [&](double t) { return ViewPoint{a + d * t, depthA + (depthB - depthA) * t}; };
        if (segment.isBehind)
            return addPiece({at(from).at, at(to).at, at((from + to) / 2).depth, false, segment.kind,
                             segment.object, segment.circle});
        const FaceGrid::Found& candidates = m_faces.near(at(from), at(to));
        std::vector<double>& stops = m_stops;
        m_faces.crossings(candidates, at(from), at(to), stops);
        for (double& stop : stops)
            stop = from + stop * (to - from);
        const double length = d.length();
        const Vec2 beside = Vec2{-d.v, d.u} * (FaceGrid::kSide / length);
        const auto add = [&](double begin, double end, bool hidden) {
            addPiece({at(begin).at, at(end).at, at((begin + end) / 2).depth, !hidden, segment.kind,
                      segment.object, segment.circle});
        };
        // What is seen alike is one line, so that dashes run through.
        double begin = from;
        std::optional<bool> wasHidden;
        for (std::size_t i = 1; i < stops.size(); ++i) {
            if ((stops[i] - stops[i - 1]) * length < 1e-3)
                continue;
            const ViewPoint middle = at((stops[i] + stops[i - 1]) / 2);
            const bool hidden = m_faces.cover(candidates, {middle.at + beside, middle.depth}) &&
                                m_faces.cover(candidates, {middle.at - beside, middle.depth});
            if (wasHidden && *wasHidden != hidden) {
                add(begin, stops[i - 1], *wasHidden);
                begin = stops[i - 1];
            }
            wasHidden = hidden;
        }
        if (wasHidden)
            add(begin, stops.back(), *wasHidden);
    }

    const SamplePart& m_part;
    const ViewCamera& m_camera;
    FaceGrid m_faces;
    std::vector<Segment> m_segments;
    std::vector<double> m_stops; // of the segment in question
};

} // namespace

ViewLines linesOf(const SamplePart& part, const std::vector<int>& shown, const ViewCamera& camera) {
    Projection projection(part, camera);
    for (const int index : shown)
        projection.add(index);
    projection.finish();
    return std::move(projection.seen);
}

const ViewLines& SeenLines::of(const SamplePart& part, const std::vector<int>& shown,
                               const ViewCamera& camera) {
    std::string asked;
    const auto add = [&](const auto& value) {
        asked.append(reinterpret_cast<const char*>(&value), sizeof(value));
    };
    const Frame& frame = camera.frame;
    for (const Vec3& axis : {frame.origin, frame.x, frame.y, frame.z})
        add(axis);
    add(std::array{camera.nearDepth, camera.farDepth});
    add(std::array{camera.window.low, camera.window.high});
    add(camera.mirrored);
    for (const int index : shown)
        add(index);
    const auto known = m_known.find(asked);
    if (known != m_known.end())
        return known->second;
    constexpr std::size_t kMostLines = 200'000; // some megabytes
    if (m_lines > kMostLines) {
        m_known.clear();
        m_lines = 0;
    }
    ++m_projections;
    ViewLines& seen = m_known[asked] = linesOf(part, shown, camera);
    m_lines += seen.lines.size() + 1;
    return seen;
}
