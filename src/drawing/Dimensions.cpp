#include "drawing/Dimensions.h"

#include "base/Translation.h"
#include "drawing/DimensionLines.h"
#include "drawing/LabelText.h"
#include "drawing/OrdinateDimensions.h"
#include "drawing/PointDimensions.h"
#include "drawing/Titles.h"

#include <numbers>

namespace {

enum eRequestType { kLinear, kOrdinate, kRadial, kAngular, kLevel };

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

class Dimensioning {
public:
    Dimensioning(DrawingContext& context, const ViewScene& scene, const StructDetViewDimStrategy& strategy)
        : lines(context, scene, strategy), m_context(context), m_scene(scene), m_strategy(strategy) {}

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
        lines.begin(m_direction, m_provenance);
        switch (type ? type->requestType : static_cast<int>(kLinear)) {
        case kOrdinate:
            addOrdinates(m_context, m_scene, request, allPoints(), lines);
            break;
        case kRadial:
            lines.add(atPoints().radius(points(request.startPointsKey)));
            break;
        case kAngular:
            lines.add(atPoints().slope(points(request.startPointsKey)));
            break;
        case kLevel:
            lines.add(atPoints().levels(points(request.startPointsKey)));
            break;
        default:
            addLinear();
        }
    }

    DimensionLines lines;

private:
    PointDimensions atPoints() const { return {m_context, m_scene, m_provenance, titleWith(1)}; }

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
        const Vec2 from = lines.onLine(a, level);
        const Vec2 to = lines.onLine(b, level);
        lines.extension(a, from);
        lines.extension(b, to);
        lines.line({from, to});
        std::string words = wordsOf(span);
        const bool isBeside = m_request->titlePosition != 0;
        if (!title.empty() && !isBeside)
            words += " " + title;
        lines.textUpon(from, to, span.isFirst, span.isLast, words);
        if (!title.empty() && isBeside)
            lines.text((from + to) * 0.5 + lines.normal() * (kDimensionText * 0.9), title, m_direction);
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
        return !isNew && !m_context.repeatsDimensions;
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
        double level = lines.next();
        for (std::size_t i = 0; i < spans.size(); ++i) {
            if (i > 0 && m_request->chained == 0)
                level = lines.next();
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

    DrawingContext& m_context;
    const ViewScene& m_scene;
    const StructDetViewDimStrategy& m_strategy;
    const StructDetViewDimRequestLinear* m_request = nullptr;
    Vec2 m_direction;
    double m_zero = 0; // along that, where the request begins to measure
    ProvenancePtr m_provenance;
    std::set<std::vector<long>> m_measured;
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
    return dimensioning.lines.written();
}
