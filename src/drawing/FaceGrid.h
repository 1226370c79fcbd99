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
    double turn = 0;       ///< 1 or -1: the way the first loop runs, which is convex and around the others
    Vec2 across;       ///< of length 1, to its longest border, and from where to where it reaches along that:
    double lowest = 0; ///< what lies oblique fills little of its box
    double highest = 0;
    double nearest = 0;

    double depthAt(Vec2 p) const { return base + du * p.u + dv * p.v; }
};

/// Faces that may hide what lies behind them, found by where they are.
class FaceGrid {
public:
    /// How far beside a segment it may be asked what covers it, mm.
    static constexpr double kSide = 0.02;

    void add(ViewFace face);
    /// To be called when all faces were added.
    void sort();

    /// Asks about the segment from now on. False where one face hides all of it, and nothing else is to be
    /// asked.
    bool look(const ViewPoint& a, const ViewPoint& b);
    /// Where, in parts of the way, borders or planes of faces that may hide it are crossed; with 0 and 1,
    /// ascending. Valid until the next segment.
    const std::vector<double>& crossings();
    /// Whether the segment is hidden on both sides at this part of the way.
    bool hides(double t) const;

private:
    static constexpr int kCells = 48; ///< in each direction

    struct Cells {
        int left, right, bottom, top;
    };

    // In parts of the way along the segment; empty where it begins behind its end.
    struct Stretch {
        double from = 0;
        double to = 1;

        bool isEmpty() const { return from > to; }
        bool contains(double t) const { return from <= t && t <= to; }
        // Keeps of it where a value, which is linear along the segment, is at least `low`.
        void clip(double atA, double atB, double low);
    };
    // A face that may hide a stretch of the segment.
    struct Candidate {
        std::size_t face = 0;
        Stretch possible;         // beyond it hides nothing
        Stretch certain = {1, 0}; // here it hides both sides
        bool hidesAll() const { return certain.from <= 0 && certain.to >= 1; }
    };

    static void measure(ViewFace& face);
    static bool contains(const ViewFace& face, Vec2 point);
    Candidate candidate(std::size_t face) const;
    int cell(double value, double low, double size) const;
    Cells cellsOf(const Box2& box) const;
    std::pair<int, int> columnsOf(int row, const Cells& cells) const;
    bool cover(double t, Vec2 beside) const;

    std::vector<ViewFace> m_faces;
    std::vector<std::int32_t> m_inCells; // faces, cell after cell
    std::vector<std::size_t> m_firsts;   // where each cell begins in them, and where the last one ends
    Box2 m_box;
    ViewPoint m_a; // the segment in question
    ViewPoint m_b;
    Vec2 m_beside;                  // to what is asked on one side of it
    std::vector<Candidate> m_found; // that may hide a stretch of it
    std::vector<double> m_stops;
    std::vector<std::uint32_t> m_asked; // per face: the last segment that met it
    std::uint32_t m_question = 0;
    std::size_t m_coverer = 0; // a face that hid all of some segment
};
