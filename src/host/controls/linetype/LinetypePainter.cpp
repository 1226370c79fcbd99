#include "controls/linetype/LinetypePainter.h"

#include "controls/KorQt.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPixelsPerMillimetre = 96.0 / 25.4;
constexpr double kShortestPeriod = 24.0; // pixels; below, dashes and gaps run together
constexpr double kSmallestSign = 7.0;    // pixels; below, a text cannot be read
constexpr double kPeriodsShown = 1.25;   // the repetition must be seen
constexpr double kLargestSign = 48.0;
constexpr double kDot = 1.6;
constexpr int kGapBeforeLine = 10;

bool isSign(const LinetypeElement& element) {
    return element.kind == LinetypeElement::kText || element.kind == LinetypeElement::kShape;
}

bool isSeen(const LinetypePattern& pattern) {
    return std::ranges::any_of(pattern, [](const auto& e) { return e.kind != LinetypeElement::kGap; });
}

void paintText(QPainter& painter, const LinetypeElement& element, double height) {
    QFont font = painter.font();
    font.setPixelSize(
        std::max(1, static_cast<int>(std::lround(height * 1.35)))); // height of a capital letter
    painter.setFont(font);
    painter.drawText(QPointF(0, 0), toQt(element.text));
}

// Shape files hold drawings that only their own program reads. The usual ones are told by their names.
void paintShape(QPainter& painter, const LinetypeElement& element, double size) {
    const KorString name = element.text.lowered();
    const double half = size / 2;
    painter.setBrush(Qt::NoBrush);
    if (name.view().starts_with("circ"))
        painter.drawEllipse(QPointF(0, 0), half, half);
    else if (name.view().starts_with("box"))
        painter.drawRect(QRectF(-half, -half, size, size));
    else
        painter.drawPolygon(QPolygonF{{-half, 0}, {0, -half}, {half, 0}, {0, half}});
}

void paintSign(QPainter& painter, QPointF at, const LinetypeElement& element, double perUnit) {
    const double size = std::min(std::abs(element.scale) * perUnit, kLargestSign);
    painter.save();
    painter.translate(at.x() + element.x * perUnit, at.y() - element.y * perUnit);
    painter.rotate(-element.rotation);
    if (element.kind == LinetypeElement::kText)
        paintText(painter, element, size);
    else
        paintShape(painter, element, std::max(size, kSmallestSign / 2));
    painter.restore();
}

void paintDot(QPainter& painter, QPointF at) {
    const double size = std::max(kDot, painter.pen().widthF());
    painter.fillRect(QRectF(at.x() - size / 2, at.y() - size / 2, size, size), painter.pen().color());
}

/// Draws one period from `x` on, as far as it lies in the area. Returns where it ends.
double paintPeriod(QPainter& painter, const QRectF& area, double x, const LinetypePattern& pattern,
                   double perUnit) {
    const double y = std::floor(area.center().y()) + 0.5;
    for (const LinetypeElement& element : pattern) {
        if (x > area.right())
            break;
        const double end = x + element.length * perUnit;
        if (isSign(element))
            paintSign(painter, {x, y}, element, perUnit);
        else if (element.kind == LinetypeElement::kDot)
            paintDot(painter, {x, y});
        else if (element.kind == LinetypeElement::kDash)
            painter.drawLine(QPointF(x, y), QPointF(std::min(std::max(end, x + 1), area.right()), y));
        x = end;
    }
    return x;
}

void repeatPattern(QPainter& painter, const QRectF& area, const LinetypePattern& pattern, double perUnit) {
    for (double x = area.left(); x < area.right();) {
        const double end = paintPeriod(painter, area, x, pattern, perUnit);
        if (end <= x) // dots alone take no length
            break;
        x = end;
    }
}

} // namespace

double LinetypePainter::pixelsPerUnit(const LinetypePattern& pattern, double width) {
    const double period = LinetypePatterns::length(pattern);
    if (period <= 0.0)
        return kPixelsPerMillimetre;
    double perUnit = std::max(kPixelsPerMillimetre, kShortestPeriod / period);
    for (const LinetypeElement& element : pattern)
        if (isSign(element) && element.scale != 0.0)
            perUnit = std::max(perUnit, kSmallestSign / std::abs(element.scale));
    return std::min(perUnit, width / (kPeriodsShown * period));
}

void LinetypePainter::paintLine(QPainter& painter, const QRectF& area, const LinetypePattern& pattern,
                                double weight) {
    if (!isSeen(pattern) || area.width() < 1.0)
        return;
    const double perUnit = pixelsPerUnit(pattern, area.width());
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    QPen pen(painter.pen().color(), weight);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setRenderHint(QPainter::Antialiasing);
    // Dashes that meet would show a seam.
    if (std::ranges::all_of(pattern, [](const auto& e) { return e.kind == LinetypeElement::kDash; })) {
        const double y = std::floor(area.center().y()) + 0.5;
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    } else {
        repeatPattern(painter, area, pattern, perUnit);
    }
    painter.restore();
}

void LinetypePainter::paintEntry(QPainter& painter, const QRect& area, const LinetypeDefinition& linetype) {
    const bool seen = isSeen(linetype.pattern);
    QRect name = area;
    if (seen)
        name.setWidth(static_cast<int>(area.width() * 0.45));
    const QString text = toQt(linetype.name).simplified();
    painter.drawText(name, Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, name.width()));
    if (seen)
        paintLine(painter, area.adjusted(name.width() + kGapBeforeLine, 0, 0, 0), linetype.pattern);
}
