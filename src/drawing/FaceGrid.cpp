#include "drawing/FaceGrid.h"

namespace {

constexpr double kDepthApart = 0.02;

constexpr double kSure = 1e-7; // by which what is certain is certain, mm

// 1 or -1 by the way in which a convex loop runs; 0 for any other loop.
double turnOf(const Loop2& loop) {
    double turn = 0;
    for (std::size_t i = 0, last = loop.size() - 1; i < loop.size(); last = i++) {
        const double next = cross(loop[i] - loop[last], loop[(i + 1) % loop.size()] - loop[i]);
        if (next * turn < 0)
            return 0;
        if (next != 0)
            turn = next > 0 ? 1 : -1;
    }
    return turn;
}

} // namespace

void FaceGrid::Stretch::clip(double atA, double atB, double low) {
    if (atA < low && atB < low)
        from = to + 1;
    else if (atA < low)
        from = std::max(from, (low - atA) / (atB - atA));
    else if (atB < low)
        to = std::min(to, (low - atA) / (atB - atA));
}

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
    if (!face.loops.empty() && std::all_of(face.loops.begin() + 1, face.loops.end(), [&](const Loop2& loop) {
            return !loop.empty() && encloses(face.loops[0], loop[0]);
        }))
        face.turn = turnOf(face.loops[0]);
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
std::pair<int, int> FaceGrid::columnsOf(int row, const Cells& cells) const {
    const Vec2 a = m_a.at;
    const Vec2 b = m_b.at;
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

FaceGrid::Candidate FaceGrid::candidate(std::size_t index) const {
    const ViewFace& face = m_faces[index];
    Candidate found{index, {}, {}};
    const auto clip = [&](double atA, double atB, double low, double margin) {
        found.possible.clip(atA, atB, low - margin);
        found.certain.clip(atA, atB, low + margin);
    };
    clip(m_a.depth - face.depthAt(m_a.at), m_b.depth - face.depthAt(m_b.at), kDepthApart,
         std::abs(face.du * m_beside.u + face.dv * m_beside.v) + kSure);
    if (face.turn == 0) {
        found.certain = {1, 0};
        return found;
    }
    const Loop2& loop = face.loops[0];
    for (std::size_t i = 0, last = loop.size() - 1; i < loop.size() && !found.possible.isEmpty();
         last = i++) {
        const Vec2 side = (loop[i] - loop[last]) * face.turn;
        clip(cross(side, m_a.at - loop[last]), cross(side, m_b.at - loop[last]), 0,
             std::abs(cross(side, m_beside)) + kSure * (std::abs(side.u) + std::abs(side.v)));
    }
    const auto isNear = [&](const Box2& box) {
        return std::min(m_a.at.u, m_b.at.u) - kSide <= box.high.u &&
               std::max(m_a.at.u, m_b.at.u) + kSide >= box.low.u &&
               std::min(m_a.at.v, m_b.at.v) - kSide <= box.high.v &&
               std::max(m_a.at.v, m_b.at.v) + kSide >= box.low.v;
    };
    if (!found.certain.isEmpty() && std::any_of(face.boxes.begin() + 1, face.boxes.end(), isNear))
        found.certain = {1, 0};
    return found;
}

bool FaceGrid::look(const ViewPoint& a, const ViewPoint& b) {
    m_a = a;
    m_b = b;
    m_found.clear();
    ++m_question;
    const Vec2 d = b.at - a.at;
    const Vec2 across = Vec2{-d.v, d.u} * (1 / std::max(d.length(), 1e-9));
    m_beside = across * kSide;
    // What hides all of one segment hides all of most next ones, too.
    if (m_coverer < m_faces.size() && candidate(m_coverer).hidesAll())
        return false;
    Box2 box;
    box.add(a.at);
    box.add(b.at);
    const double farthest = std::max(a.depth, b.depth);
    const auto isBeside = [&](const Box2& other) {
        const Vec2 middle = other.middle() - a.at;
        return std::abs(middle.u * across.u + middle.v * across.v) >
               (other.width() * std::abs(across.u) + other.height() * std::abs(across.v)) / 2 + 1;
    };
    const Cells cells = cellsOf(box);
    for (int row = cells.bottom; row <= cells.top; ++row) {
        const auto [left, right] = columnsOf(row, cells);
        for (std::size_t i = m_firsts[static_cast<std::size_t>(row * kCells + left)];
             i < m_firsts[static_cast<std::size_t>(row * kCells + right + 1)]; ++i) {
            const auto index = static_cast<std::size_t>(m_inCells[i]);
            const ViewFace& face = m_faces[index];
            if (std::exchange(m_asked[index], m_question) == m_question || face.nearest > farthest ||
                face.box.low.u > box.high.u + 1 || face.box.high.u < box.low.u - 1 ||
                face.box.low.v > box.high.v + 1 || face.box.high.v < box.low.v - 1 || isBeside(face.box))
                continue;
            const Candidate next = candidate(index);
            if (next.hidesAll()) {
                m_coverer = index;
                return false;
            }
            if (!next.possible.isEmpty())
                m_found.push_back(next);
        }
    }
    return true;
}

const std::vector<double>& FaceGrid::crossings() {
    m_stops.assign({0, 1});
    constexpr double kBeside = 0.01; // more than a crossing may lie beside the segment
    const double left = std::min(m_a.at.u, m_b.at.u) - kBeside;
    const double right = std::max(m_a.at.u, m_b.at.u) + kBeside;
    const double bottom = std::min(m_a.at.v, m_b.at.v) - kBeside;
    const double top = std::max(m_a.at.v, m_b.at.v) + kBeside;
    const auto isApart = [&](Vec2 p, Vec2 q) {
        return (p.u < left && q.u < left) || (p.u > right && q.u > right) || (p.v < bottom && q.v < bottom) ||
               (p.v > top && q.v > top);
    };
    for (const Candidate& found : m_found) {
        const ViewFace& face = m_faces[found.face];
        for (std::size_t l = 0; l < face.loops.size(); ++l) {
            if (isApart(face.boxes[l].low, face.boxes[l].high))
                continue;
            const Loop2& loop = face.loops[l];
            for (std::size_t i = 0, last = loop.size() - 1; i < loop.size(); last = i++)
                if (!isApart(loop[last], loop[i]))
                    if (const double at = crossing(m_a.at, m_b.at, loop[last], loop[i]); at > 0)
                        m_stops.push_back(at);
        }
        const double beforeA = face.depthAt(m_a.at) - m_a.depth;
        const double beforeB = face.depthAt(m_b.at) - m_b.depth;
        if ((beforeA < -kDepthApart && beforeB > kDepthApart) ||
            (beforeA > kDepthApart && beforeB < -kDepthApart))
            m_stops.push_back(beforeA / (beforeA - beforeB));
    }
    std::ranges::sort(m_stops);
    return m_stops;
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

bool FaceGrid::cover(double t, Vec2 beside) const {
    const Vec2 point = m_a.at + (m_b.at - m_a.at) * t + beside;
    const double depth = m_a.depth + (m_b.depth - m_a.depth) * t - kDepthApart;
    return std::ranges::any_of(m_found, [&](const Candidate& found) {
        const ViewFace& face = m_faces[found.face];
        return found.possible.contains(t) && face.box.low.u <= point.u && point.u <= face.box.high.u &&
               face.box.low.v <= point.v && point.v <= face.box.high.v && face.depthAt(point) < depth &&
               contains(face, point);
    });
}

bool FaceGrid::hides(double t) const {
    return std::ranges::any_of(m_found, [&](const Candidate& found) { return found.certain.contains(t); }) ||
           (cover(t, m_beside) && cover(t, m_beside * -1));
}
