#include "drawing/LengthClipping.h"

namespace {

using Stretch = std::pair<double, double>;

double along(Vec2 p, int direction) {
    return direction == 0 ? p.u : p.v;
}

// The lowest and highest place of the lines that go over into a stretch at one of its ends.
Stretch across(const ViewLines& seen, int direction, const Stretch& stretch, double end) {
    Stretch found = {1e300, -1e300};
    const double middle = (stretch.first + stretch.second) / 2;
    for (const ViewLine& line : seen.lines) {
        const double a = along(line.a, direction);
        const double b = along(line.b, direction);
        if (std::min(a, b) > middle || std::max(a, b) < middle || a == b)
            continue;
        const double part = std::clamp((end - a) / (b - a), 0.0, 1.0);
        const double place = along(line.a + (line.b - line.a) * part, 1 - direction);
        found = {std::min(found.first, place), std::max(found.second, place)};
    }
    return found;
}

bool isOblique(const ViewLine& line, int direction) {
    return std::abs(along(line.a, 1 - direction) - along(line.b, 1 - direction)) > 0.5;
}

// A break line of the type, from `low` to `high` at 0.
std::vector<Vec2> breakShape(int type, double low, double high) {
    const double middle = (low + high) / 2;
    const double size = std::min(2.5, (high - low) / 6);
    if (type == 3)
        return {{0, low},           {0, middle - size}, {size, middle - size / 2}, {-size, middle + size / 2},
                {0, middle + size}, {0, high}};
    if (type == 4)
        return {{-size, low}, {size, high}};
    return {{0, low}, {0, high}};
}

} // namespace

std::vector<Stretch> LengthClipping::stretches(const ViewLines& seen, int direction,
                                               const Strategy& strategy) {
    std::vector<double> details;
    for (const ViewLine& line : seen.lines) {
        details.push_back(along(line.a, direction));
        details.push_back(along(line.b, direction));
    }
    std::ranges::sort(details);
    std::vector<Stretch> found;
    for (std::size_t i = 1; i < details.size(); ++i) {
        const Stretch stretch = {details[i - 1] + strategy.keep, details[i] - strategy.keep};
        if (details[i] - details[i - 1] <= strategy.interval || stretch.second - stretch.first < 1)
            continue;
        const bool meetsOblique = std::ranges::any_of(seen.lines, [&](const ViewLine& line) {
            return isOblique(line, direction) &&
                   std::min(along(line.a, direction), along(line.b, direction)) < stretch.second &&
                   std::max(along(line.a, direction), along(line.b, direction)) > stretch.first;
        });
        if (strategy.oblique || !meetsOblique)
            found.push_back(stretch);
    }
    return found;
}

std::optional<Stretch> LengthClipping::alongOblique(const ViewLines& seen, int direction,
                                                    const Stretch& stretch) {
    for (const ViewLine& line : seen.lines) {
        const double a = along(line.a, direction);
        const double b = along(line.b, direction);
        if (!isOblique(line, direction) || std::min(a, b) > stretch.first || std::max(a, b) < stretch.second)
            continue;
        const auto other = [&](double at) {
            return along(line.a + (line.b - line.a) * ((at - a) / (b - a)), 1 - direction);
        };
        return std::minmax({other(stretch.first), other(stretch.second)});
    }
    return std::nullopt;
}

std::vector<ViewLine> LengthClipping::without(const std::vector<ViewLine>& lines, int direction,
                                              const std::vector<Stretch>& cuts) {
    std::vector<ViewLine> kept;
    for (const ViewLine& line : lines) {
        const double a = along(line.a, direction);
        const double d = along(line.b, direction) - a;
        double from = 0;
        const auto keep = [&](double to) {
            if (to - from < 1e-9)
                return;
            ViewLine piece = line;
            piece.a = line.a + (line.b - line.a) * from;
            piece.b = line.a + (line.b - line.a) * to;
            kept.push_back(piece);
        };
        std::vector<Stretch> met;
        for (const Stretch& cut : cuts)
            if (std::abs(d) > 1e-6) {
                Stretch part = {(cut.first - a) / d, (cut.second - a) / d};
                if (part.first > part.second)
                    std::swap(part.first, part.second);
                if (part.second > 0 && part.first < 1)
                    met.push_back(part);
            }
        std::ranges::sort(met);
        for (const Stretch& part : met) {
            keep(part.first);
            from = std::max(from, part.second);
        }
        keep(1);
    }
    return kept;
}

Primitives LengthClipping::breakLines(const ViewLines& seen, const AxisMap maps[2], const Strategy& strategy,
                                      const Pen& pen, const ProvenancePtr& provenance) {
    Primitives lines;
    for (const int direction : {0, 1})
        for (const Stretch& cut : maps[direction].cuts()) {
            const AxisMap& other = maps[1 - direction];
            for (const double at : {cut.first, cut.second}) {
                const Stretch reach = across(seen, direction, cut, at);
                if (reach.first > reach.second || strategy.type == 2 ||
                    (at == cut.second && strategy.gap <= 0))
                    continue; // without a gap both would lie upon each other
                const std::vector<Vec2> shape =
                    breakShape(strategy.type, other.at(reach.first) - strategy.extension,
                               other.at(reach.second) + strategy.extension);
                Primitive line;
                line.purpose = Primitive::kBreakLine;
                line.pen = pen;
                line.provenance = provenance;
                for (const Vec2 p : shape)
                    line.points.push_back(direction == 0 ? Vec2{maps[0].at(at) + p.u, p.v}
                                                         : Vec2{p.v, maps[1].at(at) + p.u});
                lines.push_back(std::move(line));
            }
        }
    return lines;
}
