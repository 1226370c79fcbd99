#include "controls/samples/HatchPainter.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double kPixelsPerMillimetre = 96.0 / 25.4;
constexpr double kNearest = 3.0; // pixels between lines

// Parallel lines of a pattern. Distances are parts of the spacing.
struct Family {
    double turn = 0.0;               // degrees, against the angle of the hatch
    double distance = 1.0;           // from line to line
    double offset = 0.0;             // of the first one
    std::vector<double> dashes = {}; // dash and gap in turn; empty: unbroken
};

struct Pattern {
    const char* name;
    std::vector<Family> families;
    bool isSolid = false;
    bool isScattered = false; // stones between dots
};

const std::vector<Pattern>& patterns() {
    static const std::vector<Pattern> patterns = {
        {"ansi31", {{}}},
        {"line", {{}}},
        {"ansi32", {{}, {0.0, 1.0, 0.3}}},
        {"steel", {{}, {0.0, 1.0, 0.3}}},
        {"ansi33", {{}, {0.0, 1.0, 0.5, {0.8, 0.4}}}},
        {"ansi37", {{}, {90.0}}},
        {"net", {{}, {90.0}}},
        {"net3", {{}, {60.0}, {120.0}}},
        {"dash", {{0.0, 1.0, 0.0, {1.0, 0.6}}, {0.0, 1.0, 0.5, {1.0, 0.6}}}},
        {"cross", {{0.0, 1.0, 0.0, {0.5, 0.5}}, {90.0, 1.0, 0.25, {0.5, 0.5}}}},
        {"dots", {{0.0, 0.7, 0.0, {0.12, 0.6}}}},
        {"solid", {}, true},
        {"ar-conc", {}, false, true},
    };
    return patterns;
}

const Pattern* find(const KorString& name) {
    const KorString wanted = name.trimmed().lowered();
    const auto found =
        std::ranges::find_if(patterns(), [&](const Pattern& each) { return wanted == each.name; });
    return found == patterns().end() ? nullptr : &*found;
}

void paintFamily(QPainter& painter, const QRectF& area, const Family& family, double angle, double spacing) {
    painter.save();
    painter.translate(area.center());
    painter.rotate(-(angle + family.turn));
    QPen pen = painter.pen();
    if (!family.dashes.empty()) {
        QList<qreal> lengths;
        for (const double dash : family.dashes)
            lengths.append(dash * spacing / pen.widthF());
        pen.setDashPattern(lengths);
        painter.setPen(pen);
    }
    const double reach = std::hypot(area.width(), area.height()) / 2.0;
    const double step = family.distance * spacing;
    const double first = family.offset * spacing;
    // All lines begin on one phase, so that crossing families meet.
    const double left = -std::ceil(reach / spacing) * spacing;
    const int before = static_cast<int>(std::ceil(reach / step));
    const int behind = static_cast<int>(std::floor((reach - first) / step));
    for (int line = -before; line <= behind; ++line)
        painter.drawLine(QPointF(left - 0.25 * spacing, first + line * step),
                         QPointF(reach, first + line * step));
    painter.restore();
}

void paintStones(QPainter& painter, const QRectF& area, double spacing) {
    // The same at each call: a sample that flickers is none.
    unsigned state = 12345;
    const auto next = [&state](double range) {
        state = state * 1103515245U + 12345U;
        return static_cast<double>(state >> 16 & 0x7FFFU) / 0x7FFF * range;
    };
    const int stones = std::max(3, static_cast<int>(area.width() * area.height() / (spacing * spacing * 6)));
    for (int i = 0; i < stones; ++i) {
        const QPointF at = area.topLeft() + QPointF(next(area.width()), next(area.height()));
        const double size = 2.0 + next(spacing / 4);
        painter.drawPolygon(
            QPolygonF{at, at + QPointF(size, next(size / 2)), at + QPointF(next(size), size)});
        for (int dot = 0; dot < 4; ++dot)
            painter.drawPoint(area.topLeft() + QPointF(next(area.width()), next(area.height())));
    }
}

} // namespace

bool HatchPainter::isKnown(const KorString& pattern) {
    return find(pattern) != nullptr;
}

void HatchPainter::paint(QPainter& painter, const QRectF& area, const Hatch& hatch) {
    const Pattern* pattern = find(hatch.pattern);
    if (!pattern || area.isEmpty())
        return;
    const double spacing =
        std::clamp(hatch.spacing * kPixelsPerMillimetre, kNearest, std::max(kNearest, area.height()));
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (pattern->isSolid)
        painter.fillRect(area, painter.pen().color());
    for (const Family& family : pattern->families)
        paintFamily(painter, area, family, hatch.angle, spacing);
    if (pattern->isScattered)
        paintStones(painter, area, spacing);
    painter.restore();
}
