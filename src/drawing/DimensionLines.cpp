#include "drawing/DimensionLines.h"

#include "drawing/Figures.h"

#include <numbers>

namespace {

constexpr double kTick = 1.2;

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

} // namespace

DimensionLines::DimensionLines(DrawingContext& context, const ViewScene& scene,
                               const StructDetViewDimStrategy& strategy)
    : m_context(context), m_strategy(strategy) {
    for (const ViewLine& edge : scene.seen.lines)
        if (edge.visible)
            m_edges.emplace_back(scene.onSheet(edge.a), scene.onSheet(edge.b));
    if (m_edges.empty())
        m_edges.emplace_back(scene.outline.low, scene.outline.high);
}

void DimensionLines::begin(Vec2 direction, ProvenancePtr provenance) {
    m_direction = direction;
    m_provenance = std::move(provenance);
}

double DimensionLines::next(double least) {
    const std::pair<long, long> key = {std::lround(m_direction.u * 1000), std::lround(m_direction.v * 1000)};
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

Vec2 DimensionLines::onLine(Vec2 p, double level) const {
    return p + normal() * (level - along(p, normal()));
}

void DimensionLines::line(std::vector<Vec2> points) {
    m_figures.push_back(
        Figures::line(std::move(points), m_context.pens.thin(), Primitive::kDimension, m_provenance));
}

// Where the way from a point to its dimension line leaves all that is drawn.
Vec2 DimensionLines::leaving(Vec2 from, Vec2 to) const {
    double last = 0;
    for (const auto& [a, b] : m_edges)
        if (std::min(along(a, m_direction), along(b, m_direction)) < along(from, m_direction) + 1e-6 &&
            std::max(along(a, m_direction), along(b, m_direction)) > along(from, m_direction) - 1e-6)
            last = std::max(last, crossing(from, to, a, b));
    return from + (to - from) * last;
}

void DimensionLines::extension(Vec2 point, Vec2 to) {
    const Vec2 from = leaving(point, to);
    const double length = (to - from).length();
    if (length > 2)
        line({from + (to - from) * (1 / length), to + (to - from) * (kDimensionOvershoot / length)});
    const Vec2 slant = (m_direction - normal()) * kTick;
    line({to - slant, to + slant});
}

Primitive DimensionLines::textAt(Vec2 middle, const std::string& words, Vec2 direction) const {
    return Figures::text(m_context.pens, middle, kDimensionText, words, Primitive::kDimension, m_provenance,
                         -1, std::atan2(direction.v, direction.u) * 180 / std::numbers::pi);
}

void DimensionLines::text(Vec2 middle, const std::string& words, Vec2 direction) {
    m_figures.push_back(textAt(middle, words, direction));
    m_texts.take(middle, direction, {m_figures.back().textWidth(), kDimensionText});
}

void DimensionLines::textUpon(Vec2 from, Vec2 to, bool isFirst, bool isLast, const std::string& words) {
    m_written.push_back({{from, to, normal(), m_room, isFirst, isLast}, textAt({}, words, m_direction)});
}

void DimensionLines::textAcross(Vec2 at, std::vector<Vec2> middles, const std::string& words) {
    m_written.push_back({{at, at, normal()}, textAt({}, words, normal() * -1), std::move(middles)});
}

void DimensionLines::add(Primitives more) {
    m_figures.insert(m_figures.end(), std::make_move_iterator(more.begin()),
                     std::make_move_iterator(more.end()));
}

Primitives DimensionLines::written() {
    std::vector<std::pair<Vec2, Vec2>> lines;
    for (const Primitive& figure : m_figures)
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
        m_figures.push_back(std::move(text));
    }
    return std::move(m_figures);
}
