#include "drawing/CutSolid.h"

#include <map>
#include <optional>

namespace {

constexpr double kEdgeOn = -1e-6; // faces beyond it are seen from behind, or not at all

struct Cut {
    Vec2 a;
    Vec2 b;
};

// The part of a loop behind the plane at this depth.
Loop3 behind(const Loop3& loop, const ViewCamera& camera, double depth) {
    Loop3 kept;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Vec3& a = loop[i];
        const Vec3& b = loop[(i + 1) % loop.size()];
        const double da = camera.depth(a) - depth;
        const double db = camera.depth(b) - depth;
        if (da >= 0)
            kept.push_back(a);
        if ((da >= 0) != (db >= 0))
            kept.push_back(a + (b - a) * (da / (da - db)));
    }
    return kept;
}

// Where a face meets the plane: pairs of the points at which its borders cross it.
void addCuts(const Face& face, const ViewCamera& camera, double depth, std::vector<Cut>& cuts) {
    std::vector<Vec2> points;
    for (const Loop3& loop : face.loops)
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Vec3& a = loop[i];
            const Vec3& b = loop[(i + 1) % loop.size()];
            const double da = camera.depth(a) - depth;
            const double db = camera.depth(b) - depth;
            if ((da >= 0) != (db >= 0))
                points.push_back(camera.flat(a + (b - a) * (da / (da - db))));
        }
    if (points.size() < 2)
        return;
    Vec2 d = points[1] - points[0];
    for (const Vec2 p : points)
        if ((p - points[0]).length() > d.length())
            d = p - points[0];
    std::ranges::sort(points, {}, [&](Vec2 p) { return p.u * d.u + p.v * d.v; });
    for (std::size_t i = 1; i < points.size(); i += 2)
        if ((points[i] - points[i - 1]).length() > 1e-6)
            cuts.push_back({points[i - 1], points[i]});
}

std::pair<long, long> rounded(Vec2 p) {
    return {std::lround(p.u * 50 + 0.237), std::lround(p.v * 50 + 0.237)};
}

// Chains whose ends lie nearest to each other are one: between them a hole is cut, whose wall is no face of
// the solid.
void closeChains(std::vector<Loop2> chains, std::vector<Loop2>& loops) {
    while (!chains.empty()) {
        Loop2 loop = std::move(chains.back());
        chains.pop_back();
        for (;;) {
            double least = (loop.front() - loop.back()).length();
            auto next = chains.end();
            bool turned = false;
            for (auto chain = chains.begin(); chain != chains.end(); ++chain)
                for (const bool back : {false, true})
                    if (const double gap = ((back ? chain->back() : chain->front()) - loop.back()).length();
                        gap < least) {
                        least = gap;
                        next = chain;
                        turned = back;
                    }
            if (next == chains.end())
                break;
            if (turned)
                std::ranges::reverse(*next);
            loop.insert(loop.end(), next->begin(), next->end());
            chains.erase(next);
        }
        if (loop.size() > 2)
            loops.push_back(std::move(loop));
    }
}

std::vector<Loop2> chained(const std::vector<Cut>& cuts) {
    std::multimap<std::pair<long, long>, std::size_t> ends;
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        ends.emplace(rounded(cuts[i].a), i);
        ends.emplace(rounded(cuts[i].b), i);
    }
    std::vector<bool> used(cuts.size());
    std::vector<Loop2> loops;
    std::vector<Loop2> open;
    for (std::size_t first = 0; first < cuts.size(); ++first) {
        if (used[first])
            continue;
        used[first] = true;
        Loop2 loop = {cuts[first].a, cuts[first].b};
        for (bool more = true; more;) {
            more = false;
            const auto here = rounded(loop.back());
            const auto [from, to] = ends.equal_range(here);
            for (auto it = from; it != to && !more; ++it)
                if (!used[it->second]) {
                    used[it->second] = true;
                    const Cut& next = cuts[it->second];
                    loop.push_back(rounded(next.a) == here ? next.b : next.a);
                    more = true;
                }
        }
        const bool isClosed = rounded(loop.front()) == rounded(loop.back());
        if (isClosed)
            loop.pop_back();
        if (!isClosed)
            open.push_back(std::move(loop));
        else if (loop.size() > 2)
            loops.push_back(std::move(loop));
    }
    closeChains(std::move(open), loops);
    return loops;
}

std::pair<double, double> depthsOf(const Face& face, const ViewCamera& camera) {
    std::pair<double, double> depths = {1e300, -1e300};
    for (const Loop3& loop : face.loops)
        for (const Vec3& corner : loop) {
            const double depth = camera.depth(corner);
            depths = {std::min(depths.first, depth), std::max(depths.second, depth)};
        }
    return depths;
}

std::optional<ViewFace> seenFace(const std::vector<Loop3>& loops, const Vec3& normal,
                                 const ViewCamera& camera) {
    const double facing = dot(normal, camera.frame.y);
    if (loops.empty() || loops[0].empty())
        return std::nullopt;
    ViewFace face;
    face.nearest = 1e300;
    face.loops.reserve(loops.size());
    for (const Loop3& loop : loops) {
        Loop2& flat = face.loops.emplace_back();
        flat.reserve(loop.size());
        for (const Vec3& corner : loop) {
            flat.push_back(camera.flat(corner));
            face.box.add(flat.back());
            face.nearest = std::min(face.nearest, camera.depth(corner));
        }
    }
    const double turn = camera.mirrored ? -1 : 1;
    face.du = -dot(normal, camera.frame.x) / facing * turn;
    face.dv = -dot(normal, camera.frame.z) / facing;
    const Vec2 p = face.loops[0][0];
    face.base = camera.depth(loops[0][0]) - face.du * p.u - face.dv * p.v;
    return face;
}

} // namespace

CutSolid cutSolid(const Solid& solid, const Box3& box, const ViewCamera& camera) {
    CutSolid cut;
    const auto addSeen = [&](const std::vector<Loop3>& loops, const Vec3& normal) {
        if (std::optional<ViewFace> seen = seenFace(loops, normal, camera))
            cut.faces.push_back(std::move(*seen));
    };
    std::vector<Cut> cuts;
    // Faces in the plane of the cut would make it ambiguous.
    const double depth = camera.nearDepth + 1.234e-4;
    const bool isWhole = box.seenFrom(camera.frame).low.y > depth;
    for (const Face& face : solid.faces) {
        const bool looksAway = dot(face.normal, camera.frame.y) > kEdgeOn;
        if (isWhole && looksAway)
            continue;
        const auto [nearest, farthest] = isWhole ? std::pair(depth, depth) : depthsOf(face, camera);
        if (farthest < depth)
            continue;
        const bool isCut = nearest < depth;
        if (isCut)
            addCuts(face, camera, depth, cuts);
        if (looksAway)
            continue;
        if (!isCut) {
            addSeen(face.loops, face.normal);
            continue;
        }
        std::vector<Loop3> loops;
        for (const Loop3& loop : face.loops)
            if (Loop3 kept = behind(loop, camera, depth); kept.size() > 2)
                loops.push_back(std::move(kept));
        addSeen(loops, face.normal);
    }
    cut.loops = chained(cuts);
    if (!cut.loops.empty()) {
        ViewFace closing;
        closing.loops = cut.loops;
        closing.base = closing.nearest = camera.nearDepth;
        for (const Loop2& loop : cut.loops)
            std::ranges::for_each(loop, [&](Vec2 p) { closing.box.add(p); });
        cut.faces.push_back(std::move(closing));
    }
    return cut;
}
