#include "drawing/HiddenLines.h"

#include "drawing/CutSolid.h"
#include "drawing/FaceGrid.h"
#include "drawing/LineCover.h"

#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

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
        CutSolid cut = cutSolid(object.solid, object.box, m_camera);
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
                addSegment(edge.a, edge.b, ViewLine::kEdge, index,
                           edge.circle < 0 ? -1 : circles[static_cast<std::size_t>(edge.circle)],
                           hides && std::min(a, b) > kAway);
        }
        for (const Loop3& path : object.paths)
            for (std::size_t i = 1; i < path.size(); ++i)
                addSegment(path[i - 1], path[i], ViewLine::kPath, index, -1, false);
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
        const std::vector<bool> covered = coveredSegments();
        for (std::size_t i = 0; i < m_segments.size(); ++i)
            if (!covered[i])
                addPieces(m_segments[i]);
        seen.lines = withoutCovered(seen.lines);
    }

    ViewLines seen;

private:
    struct Segment {
        ViewPoint a;
        ViewPoint b;
        ViewLine::eKind kind;
        int object;
        int circle;
        bool isBehind; ///< between two faces that look away: its own solid lies before it

        ViewPoint at(double t) const { return {a.at + (b.at - a.at) * t, a.depth + (b.depth - a.depth) * t}; }
    };

    // The part of an edge between the depths of the view, unless all of it lies outside of its window.
    void addSegment(const Vec3& a, const Vec3& b, ViewLine::eKind kind, int object, int circle,
                    bool isBehind) {
        Segment all{{m_camera.flat(a), m_camera.depth(a)},
                    {m_camera.flat(b), m_camera.depth(b)},
                    kind,
                    object,
                    circle,
                    isBehind};
        double from = 0;
        double to = 1;
        if (!clip(all.a.depth, all.b.depth, m_camera.nearDepth, m_camera.farDepth, from, to))
            return;
        Segment segment = all;
        segment.a = all.at(from);
        segment.b = all.at(to);
        if ((segment.b.at - segment.a.at).length() < 1e-3)
            return;
        double inWindow[2] = {0, 1};
        if (clipToWindow(segment.a.at, segment.b.at, inWindow[0], inWindow[1]))
            m_segments.push_back(segment);
    }

    // Which segments lie square to the view and right behind another one: nothing of them would be left.
    std::vector<bool> coveredSegments() const {
        using Ends = std::array<double, 5>; // in the view, and whether it is behind
        const auto hash = [](const Ends& ends) {
            std::size_t sum = 0;
            for (const double part : ends)
                sum = (sum ^ std::hash<double>()(part)) * 0x9E3779B97F4A7C15ULL;
            return sum ^ sum >> 32;
        };
        std::vector<bool> covered(m_segments.size());
        std::unordered_map<Ends, std::size_t, decltype(hash)> nearest(m_segments.size(), hash);
        for (std::size_t i = 0; i < m_segments.size(); ++i) {
            const auto& [a, b] = std::tie(m_segments[i].a, m_segments[i].b);
            if (a.depth != b.depth)
                continue;
            const bool forward = std::pair(a.at.u, a.at.v) < std::pair(b.at.u, b.at.v);
            const Vec2 low = forward ? a.at : b.at;
            const Vec2 high = forward ? b.at : a.at;
            const auto [known, isNew] =
                nearest.try_emplace({low.u, low.v, high.u, high.v, m_segments[i].isBehind ? 1.0 : 0.0}, i);
            if (isNew)
                continue;
            const bool isNearer = a.depth < m_segments[known->second].a.depth - 1e-6;
            covered[isNearer ? std::exchange(known->second, i) : i] = true;
        }
        return covered;
    }

    bool clipToWindow(Vec2 a, Vec2 b, double& from, double& to) const {
        const Box2& window = m_camera.window;
        return clip(a.u, b.u, window.low.u, window.high.u, from, to) &&
               clip(a.v, b.v, window.low.v, window.high.v, from, to);
    }

    // The piece of a line inside of the window.
    void addPiece(ViewLine line) {
        double from = 0;
        double to = 1;
        if (!clipToWindow(line.a, line.b, from, to))
            return;
        const Vec2 d = line.b - line.a;
        line.b = line.a + d * to;
        line.a = line.a + d * from;
        if ((line.b - line.a).length() > 1e-3)
            seen.lines.push_back(line);
    }

    void addPieces(const Segment& segment) {
        const auto add = [&](double begin, double end, bool hidden) {
            addPiece({segment.at(begin).at, segment.at(end).at, segment.at((begin + end) / 2).depth, !hidden,
                      segment.kind, segment.object, segment.circle});
        };
        if (segment.isBehind || !m_faces.look(segment.a, segment.b))
            return add(0, 1, true);
        const std::vector<double>& stops = m_faces.crossings();
        const double length = (segment.b.at - segment.a.at).length();
        // What is seen alike is one line, so that dashes run through.
        double begin = 0;
        std::optional<bool> wasHidden;
        for (std::size_t i = 1; i < stops.size(); ++i) {
            if ((stops[i] - stops[i - 1]) * length < 1e-3)
                continue;
            const bool hidden = m_faces.hides((stops[i] + stops[i - 1]) / 2);
            if (wasHidden && *wasHidden != hidden) {
                add(begin, stops[i - 1], *wasHidden);
                begin = stops[i - 1];
            }
            wasHidden = hidden;
        }
        if (wasHidden)
            add(begin, 1, *wasHidden);
    }

    const SamplePart& m_part;
    const ViewCamera& m_camera;
    FaceGrid m_faces;
    std::vector<Segment> m_segments;
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
