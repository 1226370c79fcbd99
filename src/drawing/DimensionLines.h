#pragma once

#include "drawing/DimensionTexts.h"
#include "drawing/ViewScene.h"

/// Height of the texts of dimensions, in millimetres.
inline constexpr double kDimensionText = 2.5;

/// The dimension lines of a view, with their extension lines and texts, on the sheet. Lines that run across
/// stand below the view, others at its right, one after the other.
class DimensionLines {
public:
    DimensionLines(DrawingContext& context, const ViewScene& scene, const StructDetViewDimStrategy& strategy);

    /// Lines of this direction, of length 1, follow, which are owed to `provenance`.
    void begin(Vec2 direction, ProvenancePtr provenance);
    Vec2 direction() const { return m_direction; }
    const ProvenancePtr& provenance() const { return m_provenance; }
    /// From the view to its lines.
    Vec2 normal() const { return {m_direction.v, -m_direction.u}; }
    /// The next free line that keeps at least so far away from the view: a point of it, as seen along the
    /// normal.
    double next(double least = 0);
    /// The point of the line opposite to a point of the view.
    Vec2 onLine(Vec2 p, double level) const;

    void line(std::vector<Vec2> points);
    /// From the outline to the line, and the stroke that marks it there.
    void extension(Vec2 point, Vec2 to);
    /// A text whose place is given: others are kept away from it. It is read along `direction`.
    void text(Vec2 middle, const std::string& words, Vec2 direction);
    /// A text upon a stretch of a line, or near it, where the others leave room.
    void textUpon(Vec2 from, Vec2 to, bool isFirst, bool isLast, const std::string& words);
    /// A text across the line at this point, at one of the places: the best one first.
    void textAcross(Vec2 at, std::vector<Vec2> middles, const std::string& words);
    /// Figures that were made otherwise.
    void add(Primitives more);

    /// All figures, when no more lines follow: only now texts are put to their lines.
    Primitives written();

private:
    struct Written {
        DimensionTexts::Span span;
        Primitive text;                 ///< about 0, 0
        std::vector<Vec2> middles = {}; ///< where it can be, the best place first; none: at its span
    };

    Primitive textAt(Vec2 middle, const std::string& words, Vec2 direction) const;
    Vec2 leaving(Vec2 from, Vec2 to) const;

    DrawingContext& m_context;
    const StructDetViewDimStrategy& m_strategy;
    Vec2 m_direction;
    ProvenancePtr m_provenance;
    double m_room = 0; // between the line and the view
    Primitives m_figures;
    DimensionTexts m_texts;
    std::vector<Written> m_written;
    std::vector<std::pair<Vec2, Vec2>> m_edges;   // visible ones, on the sheet
    std::map<std::pair<long, long>, int> m_lines; // used already, by their direction
};
