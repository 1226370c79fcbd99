#include "controls/samples/KorSamples.h"

#include "controls/KorReadable.h"
#include "controls/label/DrawingColors.h"
#include "controls/linetype/LinetypePainter.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPalette>

#include <algorithm>
#include <functional>

namespace {

constexpr double kPixelsPerMillimetre = 96.0 / 25.4;
constexpr double kHairline = 1.0;
constexpr double kMostWeight = 8.0; // pixels
constexpr double kDisabledOpacity = 0.45;

QColor paper() {
    return QGuiApplication::palette().color(QPalette::Base);
}

QColor ink(int color) {
    return DrawingColors::swatch(color, paper());
}

QPen frame() {
    return {KorReadable::mixed(paper(), DrawingColors::foreground(paper()), 0.45), 1.0};
}

double weightOf(double millimetres) {
    return std::clamp(millimetres * kPixelsPerMillimetre, kHairline, kMostWeight);
}

// Draws into an area that has its natural height, wherever that comes to lie and however large it is shown;
// where there is no room for its natural width, a shorter piece.
class SampleEngine : public QIconEngine {
public:
    using Paint = std::function<void(QPainter& painter, const QRectF& area)>;

    SampleEngine(QSize size, Paint paint) : m_size(size), m_paint(std::move(paint)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        if (rect.isEmpty())
            return;
        const double scale = 1.0 * rect.height() / m_size.height();
        const QSizeF size(std::min(1.0 * m_size.width(), rect.width() / scale), m_size.height());
        painter->save();
        painter->translate(rect.center() + QPointF(0.5, 0.5) -
                           QPointF(size.width(), size.height()) * scale / 2.0);
        painter->scale(scale, scale);
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * kDisabledOpacity);
        m_paint(*painter, QRectF(QPointF(), size));
        painter->restore();
    }

    // Larger than natural only where a screen asks for more pixels, which asks for the natural shape too.
    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override {
        const QSize least = size.boundedTo(m_size);
        return {std::min(least.width(),
                         m_size.scaled(m_size.width(), least.height(), Qt::KeepAspectRatio).width()),
                least.height()};
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new SampleEngine(*this); }

private:
    QSize m_size;
    Paint m_paint;
};

QIcon sample(QSize size, SampleEngine::Paint paint) {
    return QIcon(new SampleEngine(size, std::move(paint)));
}

void paintLine(QPainter& painter, const QRectF& area, const KorSamples::Line& line) {
    LinetypeElement dash;
    dash.length = 1.0;
    painter.setPen(ink(line.color));
    LinetypePainter::paintLine(painter, area, line.pattern.empty() ? LinetypePattern{dash} : line.pattern,
                               weightOf(line.weight));
}

// A leader comes from the lower left and ends in the landing, on which the label stands.
void paintArrow(QPainter& painter, KorSamples::eArrow arrow, QPointF tip, QPointF from, double size) {
    const QLineF axis(tip, from);
    const auto at = [&](double along, double across) {
        const QPointF unit = (axis.p2() - axis.p1()) / axis.length();
        return tip + unit * along + QPointF(-unit.y(), unit.x()) * across;
    };
    const QPolygonF head{at(size, size / 3), tip, at(size, -size / 3)};
    if (arrow == KorSamples::kFilledArrow) {
        painter.setBrush(painter.pen().color());
        painter.drawPolygon(head);
    } else if (arrow == KorSamples::kOpenArrow) {
        painter.drawPolyline(head);
    } else if (arrow == KorSamples::kDot) {
        painter.setBrush(painter.pen().color());
        painter.drawEllipse(tip, size / 2, size / 2);
    }
}

} // namespace

QIcon KorSamples::color(int number) {
    return sample(kSwatchSize, [number](QPainter& painter, const QRectF& area) {
        const QRectF box = area.adjusted(0.5, 1.5, -0.5, -1.5);
        painter.setPen(frame());
        const bool isOwn = number != DrawingColors::kByBlock && number < DrawingColors::kByLayer;
        painter.setBrush(isOwn ? ink(number) : paper());
        painter.drawRect(box);
        if (isOwn)
            return;
        painter.setPen(Qt::NoPen);
        painter.setBrush(frame().color());
        const bool isOfLayer = number == DrawingColors::kByLayer;
        painter.drawPolygon(QPolygonF{box.bottomLeft(), isOfLayer ? box.topRight() : box.topLeft(),
                                      isOfLayer ? box.bottomRight() : box.topRight()});
    });
}

QIcon KorSamples::line(const Line& line, QSize size) {
    return sample(size, [line](QPainter& painter, const QRectF& area) {
        painter.fillRect(area, paper());
        paintLine(painter, area.adjusted(2, 0, -2, 0), line);
    });
}

QIcon KorSamples::appearance(const Appearance& appearance) {
    return sample(kSampleSize, [appearance](QPainter& painter, const QRectF& area) {
        const bool isHatched = HatchPainter::isKnown(appearance.hatch.pattern);
        const QRectF face = area.adjusted(area.width() * 0.68, 1.5, -2.5, -1.5);
        const QRectF lines = area.adjusted(2, 0, isHatched ? face.left() - area.right() - 3 : -2, 0);
        const double middle = area.height() / 2;
        painter.fillRect(area, paper());
        if (appearance.hasVisible)
            paintLine(painter, lines.adjusted(0, 0, 0, -middle), appearance.visible);
        if (appearance.hasHidden)
            paintLine(painter, lines.adjusted(0, middle, 0, 0), appearance.hidden);
        if (!isHatched)
            return;
        painter.setPen(QPen(ink(appearance.hatch.color), kHairline));
        HatchPainter::paint(painter, face, appearance.hatch);
        painter.setPen(QPen(ink(appearance.visible.color), kHairline));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(face);
    });
}

QIcon KorSamples::hatch(const Hatch& hatch, QSize size) {
    if (!HatchPainter::isKnown(hatch.pattern))
        return {};
    return sample(size, [hatch](QPainter& painter, const QRectF& area) {
        const QRectF face = area.adjusted(0.5, 0.5, -0.5, -0.5);
        painter.fillRect(face, paper());
        painter.setPen(QPen(ink(hatch.color), kHairline));
        HatchPainter::paint(painter, face, hatch);
        painter.setPen(frame());
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(face);
    });
}

QIcon KorSamples::leader(const Leader& leader) {
    if (leader.arrow < kNoArrow || leader.arrow > kDot)
        return {};
    return sample(kSampleSize, [leader](QPainter& painter, const QRectF& area) {
        constexpr double kLeastArrow = 3.0;
        const double size =
            std::clamp(leader.arrowSize * kPixelsPerMillimetre, kLeastArrow, area.height() - 3);
        const double landing = std::min(leader.landing * kPixelsPerMillimetre, area.width() / 2);
        const QPointF tip(leader.arrow == kDot ? 2 + size / 2 : 3.0,
                          area.bottom() - (leader.arrow == kDot ? 2 + size / 2 : 2.5));
        const QPointF bend(tip.x() + 28, area.top() + 3.5);
        painter.fillRect(area, paper());
        painter.setPen(QPen(ink(DrawingColors::kForeground), kHairline, Qt::SolidLine, Qt::RoundCap));
        painter.drawPolyline(QPolygonF{tip, bend, bend + QPointF(landing, 0)});
        paintArrow(painter, static_cast<eArrow>(leader.arrow), tip, bend, size);
    });
}
