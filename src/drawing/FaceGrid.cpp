#include "drawing/FaceGrid.h"

namespace {

constexpr double kDepthApart = 0.02;

} // namespace

int FaceGrid::cell(double value, double low, double size) const {
    return std::clamp(static_cast<int>((value - low) / std::max(size, 1e-9) * kCells), 0, kCells - 1);
}

void FaceGrid::sort() {
    m_cells.assign(static_cast<std::size_t>(kCells * kCells), {});
    m_asked.assign(m_faces.size(), 0);
    for (std::size_t i = 0; i < m_faces.size(); ++i) {
        const Box2& box = m_faces[i].box;
        for (int row = cell(box.low.v, m_box.low.v, m_box.height());
             row <= cell(box.high.v, m_box.low.v, m_box.height()); ++row)
            for (int column = cell(box.low.u, m_box.low.u, m_box.width());
                 column <= cell(box.high.u, m_box.low.u, m_box.width()); ++column)
                m_cells[static_cast<std::size_t>(row * kCells + column)].push_back(
                    static_cast<std::int32_t>(i));
    }
}

FaceGrid::Found FaceGrid::near(const ViewPoint& a, const ViewPoint& b) const {
    Box2 box;
    box.add(a.at);
    box.add(b.at);
    const double farthest = std::max(a.depth, b.depth);
    Found found;
    ++m_question;
    for (int row = cell(box.low.v, m_box.low.v, m_box.height());
         row <= cell(box.high.v, m_box.low.v, m_box.height()); ++row)
        for (int column = cell(box.low.u, m_box.low.u, m_box.width());
             column <= cell(box.high.u, m_box.low.u, m_box.width()); ++column)
            for (const std::int32_t index : m_cells[static_cast<std::size_t>(row * kCells + column)]) {
                const auto i = static_cast<std::size_t>(index);
                const ViewFace& face = m_faces[i];
                if (m_asked[i] == m_question || face.nearest > farthest || face.box.low.u > box.high.u + 1 ||
                    face.box.high.u < box.low.u - 1 || face.box.low.v > box.high.v + 1 ||
                    face.box.high.v < box.low.v - 1)
                    continue;
                m_asked[i] = m_question;
                found.push_back(index);
            }
    return found;
}

std::vector<double> FaceGrid::crossings(const Found& faces, const ViewPoint& a, const ViewPoint& b) const {
    std::vector<double> stops = {0, 1};
    for (const std::int32_t index : faces) {
        const ViewFace& face = m_faces[static_cast<std::size_t>(index)];
        for (const Loop2& loop : face.loops)
            for (std::size_t i = 0; i < loop.size(); ++i)
                if (const double at = crossing(a.at, b.at, loop[i], loop[(i + 1) % loop.size()]); at > 0)
                    stops.push_back(at);
        const double beforeA = face.depthAt(a.at) - a.depth;
        const double beforeB = face.depthAt(b.at) - b.depth;
        if ((beforeA < -kDepthApart && beforeB > kDepthApart) ||
            (beforeA > kDepthApart && beforeB < -kDepthApart))
            stops.push_back(beforeA / (beforeA - beforeB));
    }
    std::ranges::sort(stops);
    return stops;
}

bool FaceGrid::cover(const Found& faces, const ViewPoint& point) const {
    return std::ranges::any_of(faces, [&](std::int32_t index) {
        const ViewFace& face = m_faces[static_cast<std::size_t>(index)];
        return face.depthAt(point.at) < point.depth - kDepthApart && contains(face.loops, point.at);
    });
}
