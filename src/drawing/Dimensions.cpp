#include "drawing/Dimensions.h"

#include "base/Translation.h"
#include "drawing/DimensionPoints.h"
#include "drawing/DimensionTexts.h"
#include "drawing/Figures.h"
#include "drawing/LabelText.h"
#include "drawing/PointDimensions.h"
#include "drawing/Titles.h"

#include <numbers>

namespace {

enum eRequestType { kLinear, kOrdinate, kRadial, kAngular, kLevel };
enum eOrdinatePlace { kAtObject, kOnLine, kAtLineEnd };
enum eOrdinateOrigin { kFromStart, kFromEnd, kFromWorkPoint, kFromGrid };

constexpr double kTick = 1.2;

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

double degreesOf(Vec2 d) {
    return std::atan2(d.v, d.u) * 180 / std::numbers::pi;
}

class Dimensioning {
public:
    Dimensioning(DrawingContext& context, const ViewScene& scene, const StructDetViewDimStrategy& strategy)
        : m_context(context), m_scene(scene), m_strategy(strategy) {
        for (const ViewLine& edge : scene.seen.lines)
            if (edge.visible)
                m_edges.emplace_back(scene.onSheet(edge.a), scene.onSheet(edge.b));
        if (m_edges.empty())
            m_edges.emplace_back(scene.outline.low, scene.outline.high);
    }

    void add(const StructDetViewDimStrategyItem& item, const StructDetViewDimRequestLinear& request) {
        const auto* type = m_context.rows.row<StructDetRequestType>(request.requestTypeKey);
        const auto* direction = m_context.rows.row<StructDetRequestLinearDirection>(request.directionKey);
        m_request = &request;
        m_direction = directionOf(direction);
        m_provenance = nearer(m_context.rows.step(request, {"request_type", "direction", "minimum_length",
                                                            "chained", "start_points", "inner_points",
                                                            "end_points", "title_format", "title_position"}),
                              nearer(m_context.rows.step(item, {"order", "dim_request"}),
                                     nearer(m_context.rows.step(m_strategy, {"first_line_distance",
                                                                             "line_spacing", "merge_equal"}),
                                            m_scene.chain)));
        switch (type ? type->requestType : static_cast<int>(kLinear)) {
        case kOrdinate:
            addOrdinates();
            break;
        case kRadial:
            append(atPoints().radius(points(request.startPointsKey)));
            break;
        case kAngular:
            append(atPoints().slope(points(request.startPointsKey)));
            break;
        case kLevel:
            append(atPoints().levels(points(request.startPointsKey)));
            break;
        default:
            addLinear();
        }
    }

    // Puts the texts to their lines, when all lines stand.
    void write() {
        std::vector<std::pair<Vec2, Vec2>> lines;
        for (const Primitive& figure : figures)
            if (figure.kind == Primitive::kLine && figure.points.size() == 2)
                lines.emplace_back(figure.points[0], figure.points[1]);
        m_texts.avoid(lines);
        std::vector<DimensionTexts::Wanted> wanted;
        for (const Written& text : m_written)
            wanted.push_back({text.span, {text.text.textWidth(), kDimensionText}, text.middles});
        const std::vector<DimensionTexts::Place> places = m_texts.place(wanted);
        for (std::size_t i = 0; i < places.size(); ++i) {
            Primitive& text = m_written[i].text;
            text.move(places[i].middle);
            m_provenance = text.provenance;
            if (!places[i].leader.empty())
                line(places[i].leader);
            figures.push_back(std::move(text));
        }
    }

    Primitives figures;

private:
    struct Written {
        DimensionTexts::Span span;
        Primitive text;                 ///< about 0, 0
        std::vector<Vec2> middles = {}; ///< where it can be, the best place first; none: at its span
    };

    PointDimensions atPoints() const { return {m_context, m_scene, m_provenance, titleWith(1)}; }
    void append(Primitives more) {
        figures.insert(figures.end(), std::make_move_iterator(more.begin()),
                       std::make_move_iterator(more.end()));
    }

    Vec2 directionOf(const StructDetRequestLinearDirection* direction) const {
        Vec2 base = {1, 0};
        const PartObject& main = *m_context.part.main();
        const Vec2 axis = m_scene.camera.flat(m_scene.camera.frame.origin + main.axis) -
                          m_scene.camera.flat(m_scene.camera.frame.origin);
        if (direction && direction->direction >= 2 && axis.length() > 0.5)
            base = axis * (1 / axis.length());
        const double angle = (direction ? direction->angle : 0) * std::numbers::pi / 180;
        Vec2 d = {base.u * std::cos(angle) - base.v * std::sin(angle),
                  base.u * std::sin(angle) + base.v * std::cos(angle)};
        const auto clean = [](double value) { return std::abs(value) < 1e-9 ? 0 : value; };
        d = {clean(d.u), clean(d.v)};
        return d.u < 0 || (d.u == 0 && d.v < 0) ? d * -1 : d;
    }
    Vec2 normal() const { return {m_direction.v, -m_direction.u}; }

    std::vector<DimensionPoint> points(std::int32_t selection) {
        return pointsOf(m_context, m_scene, selection, m_direction);
    }
    // From the first start point to the last end point, with what lies between: nothing where a request asks
    // for what the view does not show.
    std::vector<DimensionPoint> allPoints() {
        const std::vector<DimensionPoint> first = points(m_request->startPointsKey);
        const std::vector<DimensionPoint> last = points(m_request->endPointsKey);
        std::vector<DimensionPoint> all = points(m_request->innerPointsKey);
        if (all.empty() && m_context.rows.row<StructDetViewDimPointSelection>(m_request->innerPointsKey))
            return {};
        if (!first.empty())
            all.push_back(first.front());
        if (!last.empty())
            all.push_back(last.back());
        keepEachPlaceOnce(all, m_direction);
        return all;
    }
    double distance(const DimensionPoint& a, const DimensionPoint& b) const {
        return along(b.flat, m_direction) - along(a.flat, m_direction);
    }

    // The next free line beside the view that keeps at least so far away from it: a point of it, as seen
    // along its normal.
    double nextLine(double least = 0) {
        const std::pair<long, long> key = {std::lround(m_direction.u * 1000),
                                           std::lround(m_direction.v * 1000)};
        double edge = -1e300;
        for (const auto& [a, b] : m_edges)
            edge = std::max({edge, along(a, normal()), along(b, normal())});
        constexpr int kMostSkipped = 5;
        int& next = m_lines[key];
        const auto distance = [&] { return m_strategy.firstLineDistance + next * m_strategy.lineSpacing; };
        for (int skipped = 0; skipped < kMostSkipped && distance() < least; ++skipped)
            ++next;
        m_room = distance();
        const double level = edge + m_room;
        ++next;
        return level;
    }

    void line(std::vector<Vec2> points) {
        figures.push_back(
            Figures::line(std::move(points), m_context.pens.thin(), Primitive::kDimension, m_provenance));
    }
    Primitive textAt(Vec2 middle, const std::string& words, double degrees) const {
        return Figures::text(m_context.pens, middle, kDimensionText, words, Primitive::kDimension,
                             m_provenance, -1, degrees);
    }
    // A text whose place is given: others are kept away from it.
    void text(Vec2 middle, const std::string& words, double degrees) {
        figures.push_back(textAt(middle, words, degrees));
        const double angle = degrees * std::numbers::pi / 180;
        m_texts.take(middle, {std::cos(angle), std::sin(angle)},
                     {figures.back().textWidth(), kDimensionText});
    }
    // The point of the line opposite to a point of the view.
    Vec2 onLine(Vec2 p, double level) const { return p + normal() * (level - along(p, normal())); }
    // Where the way from a point to its dimension line leaves all that is drawn.
    Vec2 leaving(Vec2 from, Vec2 to) const {
        double last = 0;
        for (const auto& [a, b] : m_edges)
            if (std::min(along(a, m_direction), along(b, m_direction)) < along(from, m_direction) + 1e-6 &&
                std::max(along(a, m_direction), along(b, m_direction)) > along(from, m_direction) - 1e-6)
                last = std::max(last, crossing(from, to, a, b));
        return from + (to - from) * last;
    }
    // From the outline to the line, and the stroke that marks it there.
    void extension(Vec2 point, Vec2 to) {
        const Vec2 from = leaving(point, to);
        const double length = (to - from).length();
        if (length > 2)
            line({from + (to - from) * (1 / length), to + (to - from) * (1.5 / length)});
        const Vec2 slant = (m_direction - normal()) * kTick;
        line({to - slant, to + slant});
    }

    std::string titleWith(std::size_t count) const {
        const auto values = [&](const std::string& name) -> std::optional<std::string> {
            return name == "quantity" ? std::optional(std::to_string(count))
                                      : labelValue(m_context, nullptr, name);
        };
        return LabelText::plain(m_request->titleFormat, values);
    }

    struct Span {
        const DimensionPoint* from;
        const DimensionPoint* to;
        int count = 1; ///< of equal ones
        bool isFirst = true;
        bool isLast = true;
    };

    // Places are rounded, and not what lies between them: so stretches of a chain add up to the whole of it.
    double shown(double place) { return LabelText::rounded(place - m_zero, m_context.rows); }
    double shown(const DimensionPoint& point) { return shown(along(point.flat, m_direction)); }
    std::string measure(double value) { return LabelText::length(value, m_context.rows); }
    std::string wordsOf(const Span& span) {
        const double whole = shown(*span.to) - shown(*span.from);
        if (span.count == 1)
            return measure(whole);
        const double each = LabelText::rounded(whole / span.count, m_context.rows);
        const std::string count = std::to_string(span.count);
        if (std::abs(each * span.count - whole) < 1e-3)
            return count + " x " + measure(each) + " = " + measure(whole);
        return KorString::format(translated("%s equal = %s"), {count, measure(whole)}).toStdString();
    }

    void dimension(const Span& span, double level, const std::string& title) {
        const Vec2 a = m_scene.onSheet(span.from->flat);
        const Vec2 b = m_scene.onSheet(span.to->flat);
        const Vec2 from = onLine(a, level);
        const Vec2 to = onLine(b, level);
        extension(a, from);
        extension(b, to);
        line({from, to});
        std::string words = wordsOf(span);
        const bool isBeside = m_request->titlePosition != 0;
        if (!title.empty() && !isBeside)
            words += " " + title;
        textOf({from, to, normal(), m_room, span.isFirst, span.isLast}, words);
        if (!title.empty() && isBeside)
            text((from + to) * 0.5 + normal() * (kDimensionText * 0.9), title, degreesOf(m_direction));
    }

    void textOf(const DimensionTexts::Span& span, const std::string& words) {
        m_written.push_back({span, textAt({}, words, degreesOf(m_direction))});
    }

    // Whether lines of the view measure all of it already.
    bool isRepeated(const std::vector<Span>& spans) {
        bool isNew = !m_request->titleFormat.isEmpty();
        for (const Span& span : spans)
            for (const int count : {1, span.count}) // the sum of equal ones is written beside them
                isNew |= m_measured
                             .insert({std::lround(m_direction.u * 1000), std::lround(m_direction.v * 1000),
                                      std::lround(along(span.from->flat, m_direction)),
                                      std::lround(along(span.to->flat, m_direction)), count})
                             .second;
        return !isNew;
    }

    // Without those that would lie upon each other on the sheet.
    std::vector<DimensionPoint> apart(std::vector<DimensionPoint> all) {
        constexpr double kLeast = 0.8; // mm
        std::vector<DimensionPoint> kept;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const auto place = [&](const DimensionPoint& p) {
                return along(m_scene.onSheet(p.flat), m_direction);
            };
            if (!kept.empty() && place(all[i]) - place(kept.back()) < kLeast) {
                m_context.rows.note(translated(
                    "Points of dimensions that lie less than a millimetre apart on paper are left out."));
                if (i + 1 < all.size() || kept.size() < 2)
                    continue;
                kept.pop_back(); // the end counts
            }
            kept.push_back(all[i]);
        }
        return kept;
    }

    void addLinear() {
        const std::vector<DimensionPoint> all = apart(allPoints());
        std::vector<Span> spans;
        for (std::size_t i = 1; i < all.size(); ++i) {
            const DimensionPoint& from = m_request->chained != 0 ? all[i - 1] : all[0];
            if (distance(from, all[i]) < std::max(m_request->minimumLength, 0.5))
                continue;
            const bool isEqual =
                m_request->chained != 0 && m_strategy.mergeEqual != 0 && !spans.empty() &&
                spans.back().to == &from && isOfOneKind(*spans.back().from, from, all[i]) &&
                std::abs(distance(*spans.back().from, *spans.back().to) / spans.back().count -
                         distance(from, all[i])) < 0.5;
            if (isEqual) {
                spans.back().to = &all[i];
                ++spans.back().count;
            } else {
                spans.push_back({&from, &all[i]});
            }
        }
        if (spans.empty() || isRepeated(spans))
            return;
        m_zero = along(all.front().flat, m_direction);
        const std::string title = titleWith(all.size() - 1);
        double level = nextLine();
        for (std::size_t i = 0; i < spans.size(); ++i) {
            if (i > 0 && m_request->chained == 0)
                level = nextLine();
            spans[i].isFirst = i == 0 || m_request->chained == 0 || spans[i].from != spans[i - 1].to;
            spans[i].isLast =
                i + 1 == spans.size() || m_request->chained == 0 || spans[i + 1].from != spans[i].to;
            dimension(spans[i], level, i == 0 ? title : std::string());
        }
    }

    // Holes are spaced among each other, and not from the end of the part.
    bool isOfOneKind(const DimensionPoint& a, const DimensionPoint& b, const DimensionPoint& c) const {
        const auto kind = [&](const DimensionPoint& p) {
            const PartObject& object = m_context.object(p.object);
            return std::pair(object.type, object.role);
        };
        return kind(a) == kind(b) && kind(b) == kind(c);
    }

    double ordinateOrigin(const std::vector<DimensionPoint>& all) {
        const auto* reference =
            m_context.rows.row<StructDetOrdinateReference>(m_request->ordinateReferenceKey);
        const int from = reference ? reference->reference : static_cast<int>(kFromStart);
        double origin = along(all.front().flat, m_direction);
        if (from == kFromEnd) {
            const PartObject& main = *m_context.part.main();
            origin = std::max(along(m_scene.camera.flat(main.start), m_direction),
                              along(m_scene.camera.flat(main.end), m_direction));
        }
        double nearest = 1e300;
        for (const int index : m_context.shown)
            if (const PartObject& object = m_context.object(index);
                from == kFromGrid && object.type == eObjectType::kGrid) {
                const double place = along(m_scene.camera.flat(object.start), m_direction);
                if (std::abs(place - along(all.front().flat, m_direction)) < nearest) {
                    nearest = std::abs(place - along(all.front().flat, m_direction));
                    origin = place;
                }
            }
        return origin;
    }

    void addOrdinates() {
        const std::vector<DimensionPoint> all = allPoints();
        if (all.size() < 2)
            return;
        m_zero = ordinateOrigin(all);
        const auto* place = m_context.rows.row<StructDetOrdinatePosition>(m_request->ordinatePositionKey);
        const auto* kind = m_context.rows.row<StructDetOrdinateDimType>(m_request->ordinateTypeKey);
        const int where = place ? place->position : static_cast<int>(kAtObject);
        std::vector<std::string> values;
        for (const DimensionPoint& point : all) {
            values.push_back(measure(shown(point)));
            if (kind && kind->ordinateType == 2) // from both ends
                values.back() += " / " + measure(shown(all.back()) - shown(point));
        }
        const auto room = [](const std::string& words) { // from the line to the middle of a value
            return static_cast<double>(words.size()) * kDimensionText * 0.4 + 2.5;
        };
        const double longest = room(*std::ranges::max_element(values, {}, &std::string::size));
        const double level = nextLine(where == kAtObject ? 2 * longest : 0);
        m_provenance = nearer(
            m_context.rows.step(*m_request, {"ordinate_type", "ordinate_position", "ordinate_reference"}),
            m_provenance);
        line({onLine(m_scene.onSheet(all.front().flat), level),
              onLine(m_scene.onSheet(all.back().flat), level)});
        double next = -1e300; // so that the values stand side by side
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Vec2 from = m_scene.onSheet(all[i].flat);
            const Vec2 to = onLine(from, level);
            extension(from, to);
            const double middle = room(values[i]);
            const double degrees = degreesOf(normal() * -1);
            if (where == kOnLine) {
                textOf({to, to + m_direction * (2 * middle), normal(), m_room, true, true}, values[i]);
            } else if (where == kAtObject) { // before its line, behind it, or at its end
                const Vec2 aside = m_direction * (kDimensionText * 0.8);
                const Vec2 up = normal() * middle;
                m_written.push_back({{to, to, normal()},
                                     textAt({}, values[i], degrees),
                                     {to - aside - up, to + aside - up, to + up}});
            } else {
                const double shift = std::max(0.0, next - along(to, m_direction));
                next = along(to, m_direction) + shift + kDimensionText * 1.3;
                if (shift > 0.01)
                    line({to + normal() * 1.5, to + normal() * 2.5 + m_direction * shift});
                text(to + normal() * middle + m_direction * shift, values[i], degrees);
            }
        }
    }

    DrawingContext& m_context;
    const ViewScene& m_scene;
    const StructDetViewDimStrategy& m_strategy;
    const StructDetViewDimRequestLinear* m_request = nullptr;
    Vec2 m_direction;
    double m_room = 0; // between the line and the view
    double m_zero = 0; // along that, where the request begins to measure
    ProvenancePtr m_provenance;
    DimensionTexts m_texts;
    std::vector<Written> m_written;
    std::vector<std::pair<Vec2, Vec2>> m_edges; // visible ones, on the sheet
    std::set<std::vector<long>> m_measured;
    std::map<std::pair<long, long>, int> m_lines; // used already, by their direction
};

} // namespace

Primitives dimensionsOf(DrawingContext& context, const ViewScene& scene) {
    const auto* strategy = context.rows.row<StructDetViewDimStrategy>(scene.request->dimStrategyKey);
    if (!strategy || !scene.showsAnything || scene.outline.isEmpty())
        return {};
    Dimensioning dimensioning(context, scene, *strategy);
    constexpr std::size_t kMostRequests = 60;
    auto items = context.rows.parts<StructDetViewDimStrategyItem>(
        &StructDetViewDimStrategyItem::strategyKey, strategy->key, &StructDetViewDimStrategyItem::order);
    if (items.size() > kMostRequests) {
        items.resize(kMostRequests);
        context.rows.note(KorString::format(
            translated("Of the dimension strategy \"%s\" only the first %d requests are shown."),
            {strategy->name, KorString::number(static_cast<std::int64_t>(kMostRequests))}));
    }
    for (const StructDetViewDimStrategyItem* item : items)
        if (const auto* request = context.rows.row<StructDetViewDimRequestLinear>(item->dimRequestKey))
            dimensioning.add(*item, *request);
    dimensioning.write();
    return std::move(dimensioning.figures);
}
