#include "controls/label/LabelToken.h"

#include "controls/label/DrawingColors.h"
#include "controls/label/LabelDocument.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextDocument>

namespace {

// Room at the left and right: outside of the frame, so that neighbours do not touch, and inside of it.
constexpr double kGap = 1.5;

double padding(const QFontMetricsF& metrics) {
    return metrics.height() / 4;
}

} // namespace

QSizeF LabelToken::intrinsicSize(QTextDocument*, int, const QTextFormat& format) {
    const QFontMetricsF metrics(format.toCharFormat().font());
    const QString caption = m_texts.variable(LabelDocument::variableOf(format));
    return {metrics.horizontalAdvance(caption) + 2 * (padding(metrics) + kGap), metrics.height()};
}

void LabelToken::drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int,
                            const QTextFormat& format) {
    const QTextCharFormat look = format.toCharFormat();
    const QString name = LabelDocument::variableOf(format);
    const QFontMetricsF metrics(look.font());
    const QRectF frame = rect.adjusted(kGap, 0.5, -kGap, -0.5);
    QColor tint = look.foreground().color();
    const QColor ink = tint;
    tint.setAlphaF(0.16F);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(tint);
    painter->setPen(QPen(ink, 1, m_texts.variables.contains(name) ? Qt::SolidLine : Qt::DashLine));
    painter->drawRoundedRect(frame, padding(metrics), padding(metrics));
    painter->setPen(ink);
    painter->setFont(look.font());
    painter->drawText(QPointF(rect.left() + kGap + padding(metrics), rect.top() + metrics.ascent()),
                      m_texts.variable(name));
    painter->restore();
}
