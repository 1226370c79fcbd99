#pragma once

#include "picture/Geometry.h"

#include <cstdint>

/// A point in a view: where, and how far away.
struct ViewPoint {
    Vec2 at;
    double depth = 0;
};

/// A face as a view sees it. Its depth is base + du * u + dv * v.
struct ViewFace {
    std::vector<Loop2> loops;
    std::vector<Box2> boxes; ///< of the loops: a face can have many holes
    double base = 0;
    double du = 0;
    double dv = 0;
    Box2 box;
    bool fillsBox = false; ///< a rectangle without holes, whose borders are level and upright
    bool isConvex = false; ///< the first loop is: what joins two points in it lies in it
    Vec2 across;       ///< of length 1, to its longest border, and from where to where it reaches along that:
    double lowest = 0; ///< what lies oblique fills little of its box
    double highest = 0;
    double nearest = 0;

    double depthAt(Vec2 p) const { return base + du * p.u + dv * p.v; }
};

/// Faces that may hide what lies behind them, found by where they are.
class FaceGrid {
public:
    using Found = std::vector<std::int32_t>;
    /// How far beside a segment it may be asked what covers it, mm.
    static constexpr double kSide = 0.02;

    void add(ViewFace face);
    /// To be called when all faces were added.
    void sort();

    /// The faces that may hide a piece of the segment; null where one of them hides all of it. Valid until
    /// the next question.
    const Found* near(const ViewPoint& a, const ViewPoint& b) const;
    /// Where, in parts of the way from a to b, their borders or planes are crossed; with 0 and 1, ascending.
    void crossings(const Found& faces, const ViewPoint& a, const ViewPoint& b,
                   std::vector<double>& stops) const;
    /// Whether one of them lies before the point.
    bool cover(const Found& faces, const ViewPoint& point) const;

private:
    static constexpr int kCells = 48; ///< in each direction

    struct Cells {
        int left, right, bottom, top;
    };

    static void measure(ViewFace& face);
    static bool contains(const ViewFace& face, Vec2 point);
    bool hidesAll(std::size_t face, const ViewPoint& a, const ViewPoint& b, Vec2 beside) const;
    int cell(double value, double low, double size) const;
    Cells cellsOf(const Box2& box) const;
    std::pair<int, int> columnsOf(int row, Vec2 a, Vec2 b, const Cells& cells) const;

    std::vector<ViewFace> m_faces;
    Found m_inCells;                   // faces, cell after cell
    std::vector<std::size_t> m_firsts; // where each cell begins in them, and where the last one ends
    Box2 m_box;
    mutable Found m_found;
    mutable std::vector<std::uint32_t> m_asked; // per face: the last question that met it
    mutable std::uint32_t m_question = 0;
    mutable std::size_t m_coverer = 0; // a face that covered some point
};
