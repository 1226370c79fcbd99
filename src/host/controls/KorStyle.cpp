#include "controls/KorStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace {

/// Half way between the text and its ground: seen on both, whatever the palette.
QColor outlineColor(const QStyleOption& option) {
    const QColor text = option.palette.color(QPalette::Text);
    const QColor base = option.palette.color(QPalette::Base);
    const auto half = [](int a, int b) { return (a + b) / 2; };
    return QColor(half(text.red(), base.red()), half(text.green(), base.green()),
                  half(text.blue(), base.blue()));
}

bool isDark(const QStyleOption& option) {
    return option.palette.color(QPalette::Base).lightness() <
           option.palette.color(QPalette::Text).lightness();
}

void drawOutline(QStyle::PrimitiveElement element, const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(outlineColor(option));
    const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == QStyle::PE_IndicatorRadioButton)
        painter.drawEllipse(frame);
    else
        painter.drawRoundedRect(frame, 1.5, 1.5);
    painter.restore();
}

QPalette darkPalette() {
    const QColor window(45, 47, 50);
    const QColor base(32, 34, 36);
    const QColor text(228, 230, 232);
    const QColor disabled(128, 131, 135);
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(38, 40, 43));
    palette.setColor(QPalette::Button, QColor(56, 59, 63));
    palette.setColor(QPalette::Mid, QColor(80, 84, 88));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Link, QColor(110, 175, 240));
    palette.setColor(QPalette::Highlight, QColor(45, 110, 185));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 84, 88));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::PlaceholderText, disabled);
    return palette;
}

} // namespace

KorStyle::KorStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

QPalette KorStyle::palette(bool dark) {
    if (dark)
        return darkPalette();
    QPalette light(QColor(239, 240, 241));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::AlternateBase, QColor(247, 248, 249));
    light.setColor(QPalette::Highlight, QColor(48, 115, 190));
    light.setColor(QPalette::HighlightedText, Qt::white);
    light.setColor(QPalette::Disabled, QPalette::Highlight, QColor(170, 174, 178));
    return light;
}

void KorStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool mark = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck ||
                      element == PE_IndicatorRadioButton;
    if (mark && isDark(*option))
        drawOutline(element, *option, *painter);
}

void KorStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    const State focused = State_HasFocus | State_KeyboardFocusChange;
    if (control != CC_ToolButton || (option->state & focused) != focused)
        return;
    QStyleOptionFocusRect frame;
    frame.QStyleOption::operator=(*option);
    frame.rect = option->rect.adjusted(1, 1, -1, -1);
    QProxyStyle::drawPrimitive(PE_FrameFocusRect, &frame, painter, widget);
}
