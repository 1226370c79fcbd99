#include "shell/PrimitivePainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

namespace {

using PrimitivePainter::Ground;

QColor colorOf(const PaperColor::Rgb& rgb) {
    return {rgb.red, rgb.green, rgb.blue};
}

QPointF pointOf(Vec2 p) {
    return {p.u, -p.v};
}

// Pixels of the device in a millimetre.
double pixelsOf(const QPainter& painter) {
    const QTransform& transform = painter.deviceTransform();
    return std::max(std::hypot(transform.m11(), transform.m12()), 1e-9);
}

QPen penOf(const Pen& pen, const QColor& color, const Ground& ground, double pixels) {
    const double width = std::max({pen.weight, ground.thinnest / pixels, 1e-3});
    QPen drawn(color, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    QList<qreal> pattern;
    double period = 0;
    for (const double length : pen.dashes()) {
        pattern.append(std::max(length, 0.0) / width);
        period += length;
    }
    constexpr double kLeast = 3; // pixels in which dashes can still be told apart
    if (!pattern.isEmpty() && period * pixels >= kLeast)
        drawn.setDashPattern(pattern);
    return drawn;
}

QRectF circleOf(const Primitive& arc) {
    return {arc.points[0].u - arc.radius, -arc.points[0].v - arc.radius, 2 * arc.radius, 2 * arc.radius};
}

QPolygonF polygonOf(const Primitive& primitive) {
    QPolygonF polygon;
    for (const Vec2 p : primitive.points)
        polygon.append(pointOf(p));
    return polygon;
}

void paintArc(QPainter& painter, const Primitive& arc) {
    painter.drawArc(circleOf(arc), static_cast<int>(std::lround(arc.from * 16)),
                    static_cast<int>(std::lround((arc.to - arc.from) * 16)));
}

void paintText(QPainter& painter, const Primitive& primitive, const QColor& color) {
    constexpr int kSize = 64; // pixels of the font, which is then made as large as it is to be
    const LabelStyle& style = primitive.style;
    const QString text = QString::fromStdString(primitive.text);
    QFont font(style.font.isEmpty() ? QStringLiteral("Arial")
                                    : QString::fromStdString(style.font.toStdString()));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    const QFontMetricsF metrics(font, painter.device());
    const double advance = metrics.horizontalAdvance(text);
    if (advance <= 0)
        return;
    const double height = style.size / (Primitive::kCapitals * kSize);
    painter.save();
    painter.translate(pointOf(primitive.points[0]));
    painter.rotate(-primitive.turned);
    painter.scale(primitive.textWidth() / advance, height);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QPointF(), text);
    painter.restore();
}

void paintShape(QPainter& painter, const Primitive& primitive, const QPen& pen) {
    switch (primitive.kind) {
    case Primitive::kLine:
        painter.setPen(pen);
        painter.drawPolyline(polygonOf(primitive));
        break;
    case Primitive::kArc:
        painter.setPen(pen);
        paintArc(painter, primitive);
        break;
    case Primitive::kFill:
        painter.setPen(Qt::NoPen);
        painter.setBrush(pen.color());
        painter.drawPolygon(polygonOf(primitive));
        painter.setBrush(Qt::NoBrush);
        break;
    case Primitive::kText:
        paintText(painter, primitive, pen.color());
        break;
    }
}

// The line around a primitive at some distance.
QPainterPath outlineOf(const Primitive& primitive, double distance) {
    QPainterPath path;
    switch (primitive.kind) {
    case Primitive::kText: {
        const QRectF box(0, -primitive.style.size, primitive.textWidth(), primitive.style.size);
        path.addRect(box.adjusted(-distance, -distance, distance, distance));
        QTransform place;
        place.translate(primitive.points[0].u, -primitive.points[0].v);
        place.rotate(-primitive.turned);
        return place.map(path);
    }
    case Primitive::kArc:
        path.arcMoveTo(circleOf(primitive), primitive.from);
        path.arcTo(circleOf(primitive), primitive.from, primitive.to - primitive.from);
        break;
    default:
        path.addPolygon(polygonOf(primitive));
    }
    QPainterPathStroker stroker(QPen(Qt::black, 2 * distance, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return stroker.createStroke(path);
}

} // namespace

QColor PrimitivePainter::paper(const Ground& ground) {
    return colorOf(PaperColor::ground(ground.kind));
}

void PrimitivePainter::paint(QPainter& painter, std::span<const Primitive* const> primitives,
                             const Ground& ground) {
    const double pixels = pixelsOf(painter);
    const Pen* last = nullptr;
    QPen pen;
    for (const Primitive* primitive : primitives) {
        if (primitive->kind == Primitive::kText) {
            paintText(painter, *primitive, colorOf(PaperColor::of(primitive->style.color, ground.kind)));
            continue;
        }
        if (!last || !(*last == primitive->pen))
            pen = penOf(primitive->pen, colorOf(PaperColor::of(primitive->pen.color, ground.kind)), ground,
                        pixels);
        last = &primitive->pen;
        paintShape(painter, *primitive, pen);
    }
}

void PrimitivePainter::highlight(QPainter& painter, std::span<const Primitive* const> primitives,
                                 const Ground& ground) {
    const QColor color = colorOf(PaperColor::highlight(ground.kind));
    const double pixels = pixelsOf(painter);
    const double distance = std::max(1.0, 4 / pixels);
    QPainterPath around;
    around.setFillRule(Qt::WindingFill);
    // Many outlines would hide what they point out.
    constexpr std::size_t kMost = 60;
    if (primitives.size() <= kMost) {
        for (const Primitive* primitive : primitives)
            around.addPath(outlineOf(*primitive, distance));
    } else {
        Box2 box;
        for (const Primitive* primitive : primitives)
            box.add(primitive->box());
        around.addRect(QRectF(pointOf({box.low.u, box.high.v}), pointOf({box.high.u, box.low.v}))
                           .adjusted(-distance, -distance, distance, distance));
    }
    QColor halo = color;
    halo.setAlpha(primitives.size() <= kMost ? 55 : 25); // it lies above what is drawn
    painter.setPen(QPen(color, std::max(0.18, 1 / pixels)));
    painter.setBrush(halo);
    painter.drawPath(around);
    painter.setBrush(Qt::NoBrush);
    for (const Primitive* primitive : primitives) {
        Pen pen = primitive->pen;
        pen.weight = std::max(pen.weight, 0.35);
        paintShape(painter, *primitive, penOf(pen, color, ground, pixels));
    }
}
