#include "drawing/CutMarks.h"

#include "drawing/Figures.h"
#include "drawing/ViewPlace.h"

namespace {

constexpr double kStroke = 6; // mm, of the mark of a cut
constexpr double kArrow = 5;
constexpr double kLetter = 5;

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

// The corners of what a cut view shows, at the depth of its plane.
std::array<Vec3, 4> cornersOf(const ViewCamera& camera) {
    const Box2& window = camera.window;
    std::array<Vec3, 4> corners;
    std::size_t i = 0;
    for (const Vec2 flat :
         {window.low, Vec2{window.high.u, window.low.v}, window.high, Vec2{window.low.u, window.high.v}})
        corners[i++] = camera.frame.origin + camera.frame.x * (camera.mirrored ? -flat.u : flat.u) +
                       camera.frame.y * camera.nearDepth + camera.frame.z * flat.v;
    return corners;
}

class Marking {
public:
    Marking(DrawingContext& context, const ViewPicture& cut) : m_context(context), m_cut(cut) {
        m_pen = context.pens.thin();
        m_pen.weight = 0.5;
        const auto* request = context.rows.row<StructDetViewRequest>(cut.key);
        m_provenance = request ? nearer(context.rows.step(*request, {"used_for_cuts_and_callouts",
                                                                     "system_and_box", "depth_position"}),
                                        context.chain)
                               : context.chain;
    }

    // False where the cut cannot be shown in the view.
    bool markIn(ViewPicture& view) {
        const Vec3 looking = m_cut.place->camera.frame.y;
        const double same = dot(looking, view.place->camera.frame.y);
        const Vec2 d = view.place->camera.flat(view.place->camera.frame.origin + looking) -
                       view.place->camera.flat(view.place->camera.frame.origin);
        if (std::abs(same) < 0.02 && d.length() > 0.99)
            return markCut(view, d * (1 / d.length()));
        return same > 0.98 && markPiece(view);
    }

private:
    // The stretch of the plane in the view, along `across`, where something of the part is.
    bool markCut(ViewPicture& view, Vec2 looking) {
        const Vec2 across = {-looking.v, looking.u};
        Box2 plane; // as seen across and along the way of looking
        for (const Vec3& corner : cornersOf(m_cut.place->camera)) {
            const Vec2 p = view.place->onPicture(corner);
            plane.add(Vec2{along(p, across), along(p, looking)});
        }
        const Box2& outline = view.place->outline;
        Box2 part;
        Box2 all;
        for (const auto& [box, turned] :
             {std::pair(&outline, &part), std::pair(&std::as_const(view.box), &all)})
            for (const Vec2 p :
                 {box->low, Vec2{box->high.u, box->low.v}, box->high, Vec2{box->low.u, box->high.v}})
                turned->add(Vec2{along(p, across), along(p, looking)});
        const double at = plane.low.v;
        if (outline.isEmpty() || at < part.low.v - 2 || at > part.high.v + 2)
            return false;
        double low = std::max(part.low.u, plane.low.u);
        double high = std::min(part.high.u, plane.high.u);
        if (low >= high)
            return false;
        const auto [first, last] = metBy(view, looking, across, at);
        if (std::max(low, first) < std::min(high, last)) {
            low = std::max(low, first);
            high = std::min(high, last);
        }
        Primitives marks = stroke(looking, across, at, low - 2, -1, std::min(low, all.low.u) - 2, view);
        for (Primitive& mark : stroke(looking, across, at, high + 2, 1, std::max(high, all.high.u) + 2, view))
            marks.push_back(std::move(mark));
        take(view, std::move(marks));
        return true;
    }

    // From where to where the trace of the plane meets edges of the view.
    static std::pair<double, double> metBy(const ViewPicture& view, Vec2 looking, Vec2 across, double at) {
        std::pair<double, double> met = {1e300, -1e300};
        for (const Primitive& edge : view.primitives) {
            if (edge.purpose != Primitive::kVisibleEdge || edge.kind != Primitive::kLine)
                continue;
            const double from = along(edge.points[0], looking) - at;
            const double to = along(edge.points[1], looking) - at;
            if (from * to > 0 || from == to)
                continue;
            const Vec2 p = edge.points[0] + (edge.points[1] - edge.points[0]) * (from / (from - to));
            met = {std::min(met.first, along(p, across)), std::max(met.second, along(p, across))};
        }
        return met;
    }

    // The mark at one end, as near as it covers no dimension and no text, but not beyond `farthest`.
    Primitives stroke(Vec2 looking, Vec2 across, double at, double place, double outward, double farthest,
                      const ViewPicture& view) {
        constexpr double kStep = 3;
        constexpr int kMostSteps = 300; // what damaged records draw can reach kilometres out
        Primitives marks = strokeAt(looking, across, at, place, outward);
        const Obstacles obstacles = obstaclesOf(view);
        const auto isCovering = [&](const Primitive& mark) { return covers(obstacles, mark.box()); };
        for (int step = 0; step < kMostSteps && place * outward < farthest * outward &&
                           std::ranges::any_of(marks, isCovering);
             ++step) {
            place = outward * std::min(place * outward + kStep, farthest * outward);
            marks = strokeAt(looking, across, at, place, outward);
        }
        return marks;
    }

    Primitives strokeAt(Vec2 looking, Vec2 across, double at, double place, double outward) {
        Primitives marks;
        const Vec2 from = across * place + looking * at;
        const Vec2 to = from + across * (outward * kStroke);
        marks.push_back(Figures::line({from, to}, m_pen, Primitive::kSymbol, m_provenance));
        const Vec2 tip = to + looking * kArrow;
        const Vec2 side = across * 0.9;
        marks.push_back(Figures::line({to, tip}, m_context.pens.thin(), Primitive::kSymbol, m_provenance));
        Primitive head = Figures::line({tip, tip - looking * 2.5 + side, tip - looking * 2.5 - side},
                                       m_context.pens.thin(), Primitive::kSymbol, m_provenance);
        head.kind = Primitive::kFill;
        marks.push_back(std::move(head));
        marks.push_back(letter(to + looking * (kArrow / 2) + across * (outward * kLetter)));
        return marks;
    }

    bool markPiece(ViewPicture& view) {
        Box2 piece;
        for (const Vec3& corner : cornersOf(m_cut.place->camera))
            piece.add(view.place->onPicture(corner));
        const Box2& outline = view.place->outline;
        const Vec2 size = {piece.width(), piece.height()};
        constexpr double kPiece = 0.7; // of the view, from which on it would be all of it
        const bool isInside = !outline.isEmpty() && piece.low.u < outline.high.u &&
                              piece.high.u > outline.low.u && piece.low.v < outline.high.v &&
                              piece.high.v > outline.low.v;
        if (!isInside || (size.u > kPiece * outline.width() && size.v > kPiece * outline.height()) ||
            size.u > outline.width() * 0.95)
            return false;
        const double radius = std::min(size.length() / 2, std::max(size.u, size.v) * 0.6);
        Primitives marks;
        Pen pen = m_context.pens.centreLine(7);
        marks.push_back(Figures::circle(piece.middle(), radius, pen, Primitive::kSymbol, m_provenance));
        Primitives called;
        const Obstacles obstacles = obstaclesOf(view);
        for (const Vec2 d : {Vec2{1, 1}, Vec2{-1, 1}, Vec2{1, -1}, Vec2{-1, -1}}) {
            const Vec2 rim = piece.middle() + d * (0.7071 * radius);
            const Vec2 end = rim + d * 4;
            called = {Figures::line({rim, end, end + Vec2{7 * d.u, 0}}, m_context.pens.thin(),
                                    Primitive::kSymbol, m_provenance),
                      letter(end + Vec2{3.5 * d.u, kLetter / 2 + 1})};
            if (!covers(obstacles, called.back().box()))
                break;
        }
        marks.insert(marks.end(), called.begin(), called.end());
        take(view, std::move(marks));
        return true;
    }

    Primitive letter(Vec2 middle) const {
        return Figures::text(m_context.pens, middle, kLetter, m_cut.letter, Primitive::kSymbol, m_provenance);
    }

    // What a mark keeps clear of.
    struct Obstacles {
        std::vector<const Primitive*> lines; // of labels
        std::vector<Box2> boxes;
    };

    static Obstacles obstaclesOf(const ViewPicture& view) {
        Obstacles obstacles;
        for (const Primitive& other : view.primitives)
            if (other.purpose == Primitive::kLabel && other.kind == Primitive::kLine)
                obstacles.lines.push_back(&other);
            else if (other.kind == Primitive::kText || other.purpose == Primitive::kDimension ||
                     other.purpose == Primitive::kSymbol)
                obstacles.boxes.push_back(other.box());
        return obstacles;
    }

    static bool covers(const Obstacles& obstacles, const Box2& mark) {
        constexpr double kClear = 0.8; // mm
        return std::ranges::any_of(obstacles.boxes,
                                   [&](const Box2& box) {
                                       return box.low.u - kClear < mark.high.u &&
                                              mark.low.u < box.high.u + kClear &&
                                              box.low.v - kClear < mark.high.v &&
                                              mark.low.v < box.high.v + kClear;
                                   }) ||
               std::ranges::any_of(obstacles.lines,
                                   [&](const Primitive* line) { return passes(*line, mark); });
    }

    // Whether a leader, or the frame of a label, passes the mark.
    static bool passes(const Primitive& line, const Box2& mark) {
        const Vec2 corner = {mark.low.u, mark.high.v};
        const Vec2 opposite = {mark.high.u, mark.low.v};
        for (std::size_t i = 1; i < line.points.size(); ++i)
            for (const auto& [a, b] : {std::pair(mark.low, mark.high), std::pair(corner, opposite)})
                if (crossing(line.points[i - 1], line.points[i], a, b) >= 0)
                    return true;
        return false;
    }

    static void take(ViewPicture& view, Primitives marks) {
        view.box.add(boxOf(marks));
        view.primitives.insert(view.primitives.end(), std::make_move_iterator(marks.begin()),
                               std::make_move_iterator(marks.end()));
    }

    DrawingContext& m_context;
    const ViewPicture& m_cut;
    Pen m_pen;
    ProvenancePtr m_provenance;
};

} // namespace

void addCutMarks(DrawingContext& context, std::vector<ViewPicture>& views, std::size_t main) {
    std::vector<std::size_t> order = {main};
    for (std::size_t i = 0; i < views.size(); ++i)
        if (i != main && !views[i].isCut)
            order.push_back(i);
    for (std::size_t i = 0; i < views.size(); ++i) {
        if (!views[i].isCut || !views[i].place)
            continue;
        const ViewPicture cut = views[i];
        Marking marking(context, cut);
        for (const std::size_t other : order)
            if (other != i && views[other].place && marking.markIn(views[other]))
                break;
    }
}
