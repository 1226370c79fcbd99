#include "drawing/FaceGrid.h"

namespace {

constexpr double kDepthApart = 0.02;

bool isConvex(const Loop2& loop) {
    double turn = 0;
    for (std::size_t i = 0, last = loop.size() - 1; i < loop.size(); last = i++) {
        const double next = cross(loop[i] - loop[last], loop[(i + 1) % loop.size()] - loop[i]);
        if (next * turn < 0)
            return false;
        if (next != 0)
            turn = next;
    }
    return turn != 0;
}

} // namespace

int FaceGrid::cell(double value, double low, double size) const {
    return std::clamp(static_cast<int>((value - low) / std::max(size, 1e-9) * kCells), 0, kCells - 1);
}

FaceGrid::Cells FaceGrid::cellsOf(const Box2& box) const {
    return {cell(box.low.u, m_box.low.u, m_box.width()), cell(box.high.u, m_box.low.u, m_box.width()),
            cell(box.low.v, m_box.low.v, m_box.height()), cell(box.high.v, m_box.low.v, m_box.height())};
}

void FaceGrid::measure(ViewFace& face) {
    face.boxes.resize(face.loops.size());
    Vec2 longest;
    double square = 0; // of its length
    for (std::size_t i = 0; i < face.loops.size(); ++i)
        for (std::size_t k = 0; k < face.loops[i].size(); ++k) {
            const Vec2 corner = face.loops[i][k];
            face.boxes[i].add(corner);
            const Vec2 border = face.loops[i][(k + 1) % face.loops[i].size()] - corner;
            if (const double next = border.u * border.u + border.v * border.v; next > square) {
                longest = border;
                square = next;
            }
        }
    const auto isCorner = [&](Vec2 p) {
        constexpr double kSame = 1e-6;
        return std::min(p.u - face.box.low.u, face.box.high.u - p.u) < kSame &&
               std::min(p.v - face.box.low.v, face.box.high.v - p.v) < kSame;
    };
    face.fillsBox =
        face.loops.size() == 1 && face.loops[0].size() == 4 && std::ranges::all_of(face.loops[0], isCorner);
    face.isConvex = !face.loops.empty() && isConvex(face.loops[0]);
    const double length = std::max(longest.length(), 1e-9);
    face.across = Vec2{-longest.v, longest.u} * (1 / length);
    face.lowest = 1e300;
    face.highest = -1e300;
    for (const Loop2& loop : face.loops)
        for (const Vec2 corner : loop) {
            const double at = corner.u * face.across.u + corner.v * face.across.v;
            face.lowest = std::min(face.lowest, at);
            face.highest = std::max(face.highest, at);
        }
}

void FaceGrid::add(ViewFace face) {
    measure(face);
    m_box.add(face.box);
    m_faces.push_back(std::move(face));
}

void FaceGrid::sort() {
    std::ranges::stable_sort(m_faces, {}, &ViewFace::nearest);
    m_asked.assign(m_faces.size(), 0);
    m_firsts.assign(static_cast<std::size_t>(kCells * kCells) + 1, 0);
    const auto eachCell = [&](const ViewFace& face, const auto& take) {
        const Cells cells = cellsOf(face.box);
        for (int row = cells.bottom; row <= cells.top; ++row)
            for (int column = cells.left; column <= cells.right; ++column)
                take(static_cast<std::size_t>(row * kCells + column));
    };
    for (const ViewFace& face : m_faces)
        eachCell(face, [&](std::size_t number) { ++m_firsts[number + 1]; });
    for (std::size_t i = 1; i < m_firsts.size(); ++i)
        m_firsts[i] += m_firsts[i - 1];
    std::vector<std::size_t> next(m_firsts.begin(), m_firsts.end() - 1);
    m_inCells.resize(m_firsts.back());
    for (std::size_t i = 0; i < m_faces.size(); ++i)
        eachCell(m_faces[i],
                 [&](std::size_t number) { m_inCells[next[number]++] = static_cast<std::int32_t>(i); });
}

// The columns of a row of cells that the segment passes: one that lies oblique passes few of its box.
std::pair<int, int> FaceGrid::columnsOf(int row, Vec2 a, Vec2 b, const Cells& cells) const {
    const double rise = b.v - a.v;
    if (std::abs(rise) < 1)
        return {cells.left, cells.right};
    constexpr double kBeside = 1;
    const double height = m_box.height() / kCells;
    const double low = m_box.low.v + row * height - kBeside;
    const auto at = [&](double v) { return a.u + (b.u - a.u) * std::clamp((v - a.v) / rise, 0.0, 1.0); };
    const double first = at(low);
    const double last = at(low + height + 2 * kBeside);
    return {cell(std::min(first, last) - kBeside, m_box.low.u, m_box.width()),
            cell(std::max(first, last) + kBeside, m_box.low.u, m_box.width())};
}

// Whether the face hides the segment and what lies beside it, from one end to the other.
bool FaceGrid::hidesAll(std::size_t index, const ViewPoint& a, const ViewPoint& b, Vec2 beside) const {
    const ViewFace& face = m_faces[index];
    if (!face.isConvex)
        return false;
    Box2 box;
    for (const auto& [at, depth] : {a, b})
        for (const Vec2 point : {at + beside, at - beside}) {
            if (face.box.low.u > point.u || point.u > face.box.high.u || face.box.low.v > point.v ||
                point.v > face.box.high.v || face.depthAt(point) >= depth - kDepthApart ||
                !(face.fillsBox || encloses(face.loops[0], point)))
                return false;
            box.add(point);
        }
    for (std::size_t l = 1; l < face.boxes.size(); ++l)
        if (box.low.u <= face.boxes[l].high.u && face.boxes[l].low.u <= box.high.u &&
            box.low.v <= face.boxes[l].high.v && face.boxes[l].low.v <= box.high.v)
            return false;
    m_coverer = index;
    return true;
}

const FaceGrid::Found* FaceGrid::near(const ViewPoint& a, const ViewPoint& b) const {
    Box2 box;
    box.add(a.at);
    box.add(b.at);
    const double farthest = std::max(a.depth, b.depth);
    m_found.clear();
    ++m_question;
    const Vec2 d = b.at - a.at;
    const double length = std::max(d.length(), 1e-9);
    const Vec2 across = {-d.v / length, d.u / length};
    const Vec2 beside = across * kSide;
    if (m_coverer < m_faces.size() && hidesAll(m_coverer, a, b, beside))
        return nullptr;
    const auto isBeside = [&](const Box2& other) {
        const Vec2 middle = other.middle() - a.at;
        return std::abs(middle.u * across.u + middle.v * across.v) >
               (other.width() * std::abs(across.u) + other.height() * std::abs(across.v)) / 2 + 1;
    };
    const Cells cells = cellsOf(box);
    for (int row = cells.bottom; row <= cells.top; ++row) {
        const auto [left, right] = columnsOf(row, a.at, b.at, cells);
        for (std::size_t i = m_firsts[static_cast<std::size_t>(row * kCells + left)];
             i < m_firsts[static_cast<std::size_t>(row * kCells + right + 1)]; ++i) {
            const auto index = static_cast<std::size_t>(m_inCells[i]);
            const ViewFace& face = m_faces[index];
            if (m_asked[index] == m_question)
                continue;
            m_asked[index] = m_question;
            if (face.nearest > farthest || face.box.low.u > box.high.u + 1 ||
                face.box.high.u < box.low.u - 1 || face.box.low.v > box.high.v + 1 ||
                face.box.high.v < box.low.v - 1 || isBeside(face.box))
                continue;
            const double least = FaceGrid::kSide * (std::abs(face.du) + std::abs(face.dv)) - kDepthApart;
            if (face.depthAt(a.at) - a.depth > least && face.depthAt(b.at) - b.depth > least)
                continue; // all of it lies behind
            const double atA = a.at.u * face.across.u + a.at.v * face.across.v;
            const double atB = b.at.u * face.across.u + b.at.v * face.across.v;
            if (std::max(atA, atB) < face.lowest - 1 || std::min(atA, atB) > face.highest + 1)
                continue;
            if (hidesAll(index, a, b, beside))
                return nullptr;
            m_found.push_back(m_inCells[i]);
        }
    }
    return &m_found;
}

void FaceGrid::crossings(const Found& faces, const ViewPoint& a, const ViewPoint& b,
                         std::vector<double>& stops) const {
    stops.assign({0, 1});
    constexpr double kBeside = 0.01; // more than a crossing may lie beside the segment
    const double left = std::min(a.at.u, b.at.u) - kBeside;
    const double right = std::max(a.at.u, b.at.u) + kBeside;
    const double bottom = std::min(a.at.v, b.at.v) - kBeside;
    const double top = std::max(a.at.v, b.at.v) + kBeside;
    const auto isApart = [&](Vec2 p, Vec2 q) {
        return (p.u < left && q.u < left) || (p.u > right && q.u > right) || (p.v < bottom && q.v < bottom) ||
               (p.v > top && q.v > top);
    };
    for (const std::int32_t index : faces) {
        const ViewFace& face = m_faces[static_cast<std::size_t>(index)];
        for (std::size_t l = 0; l < face.loops.size(); ++l) {
            if (isApart(face.boxes[l].low, face.boxes[l].high))
                continue;
            const Loop2& loop = face.loops[l];
            for (std::size_t i = 0, last = loop.size() - 1; i < loop.size(); last = i++)
                if (!isApart(loop[last], loop[i]))
                    if (const double at = crossing(a.at, b.at, loop[last], loop[i]); at > 0)
                        stops.push_back(at);
        }
        const double beforeA = face.depthAt(a.at) - a.depth;
        const double beforeB = face.depthAt(b.at) - b.depth;
        if ((beforeA < -kDepthApart && beforeB > kDepthApart) ||
            (beforeA > kDepthApart && beforeB < -kDepthApart))
            stops.push_back(beforeA / (beforeA - beforeB));
    }
    std::ranges::sort(stops);
}

// Of a point in its box.
bool FaceGrid::contains(const ViewFace& face, Vec2 point) {
    if (face.fillsBox)
        return true;
    bool inside = false;
    for (std::size_t l = 0; l < face.loops.size(); ++l) {
        const Box2& box = face.boxes[l];
        const bool isNear =
            box.low.u <= point.u && point.u <= box.high.u && box.low.v <= point.v && point.v <= box.high.v;
        if (isNear && encloses(face.loops[l], point))
            inside = !inside;
    }
    return inside;
}

bool FaceGrid::cover(const Found& faces, const ViewPoint& point) const {
    const auto covers = [&](std::int32_t index) {
        const ViewFace& face = m_faces[static_cast<std::size_t>(index)];
        return face.box.low.u <= point.at.u && point.at.u <= face.box.high.u &&
               face.box.low.v <= point.at.v && point.at.v <= face.box.high.v &&
               face.depthAt(point.at) < point.depth - kDepthApart && contains(face, point.at);
    };
    // What lay before the last point lies before most next ones, too.
    if (m_coverer < m_faces.size() && covers(static_cast<std::int32_t>(m_coverer)))
        return true;
    const auto found = std::ranges::find_if(faces, covers);
    if (found == faces.end())
        return false;
    m_coverer = static_cast<std::size_t>(*found);
    return true;
}
