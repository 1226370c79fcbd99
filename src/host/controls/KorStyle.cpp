#include "controls/KorStyle.h"

#include "controls/KorOwnColors.h"
#include "controls/KorPictures.h"
#include "controls/KorReadable.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace {

constexpr QStyle::State kFocused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;

QPalette::ColorGroup groupOf(const QStyleOption& option) {
    return option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
}

/// Between the text and its ground, `share` of the way to the text: seen on both.
QColor outlineColor(const QStyleOption& option, double share) {
    const QPalette::ColorGroup group = groupOf(option);
    return KorReadable::mixed(option.palette.color(group, QPalette::Base),
                              option.palette.color(group, QPalette::Text), share);
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

/// `color`, so far towards the text that it is seen on each ground that controls stand on.
QColor seen(const QPalette& palette, const QColor& color, double margin) {
    constexpr QPalette::ColorRole kGrounds[] = {QPalette::Window, QPalette::Base, QPalette::Button};
    const double wanted = KorStyle::kContrast * margin;
    return KorReadable::moved(color, palette.color(QPalette::Text), [&](const QColor& reached) {
        return std::ranges::all_of(kGrounds, [&](QPalette::ColorRole ground) {
            return KorReadable::contrast(reached, palette.color(ground)) >= wanted;
        });
    });
}

/// The outline of an element that Fusion draws too faintly to be seen; invalid where it does not.
QColor outlineOf(QStyle::PrimitiveElement element, const QStyleOption& option) {
    constexpr double kFaint = 0.3; // of what is disabled, and of frames that only divide
    const bool isEnabled = option.state & QStyle::State_Enabled;
    switch (element) {
    case QStyle::PE_IndicatorRadioButton: // a circle loses some by its smooth edge
        return isEnabled ? seen(option.palette, option.palette.color(QPalette::Window), 1.6)
                         : outlineColor(option, kFaint);
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorItemViewItemCheck:
        return isEnabled ? KorStyle::markColor(option.palette) : outlineColor(option, kFaint);
    case QStyle::PE_FrameLineEdit:
        if (!isEnabled)
            return outlineColor(option, kFaint);
        return option.state & QStyle::State_HasFocus ? KorStyle::focusColor(option.palette)
                                                     : KorStyle::markColor(option.palette);
    case QStyle::PE_PanelButtonCommand:
        return (option.state & kFocused) == kFocused ? KorStyle::focusColor(option.palette) : QColor();
    case QStyle::PE_FrameFocusRect:
        return KorStyle::focusColor(option.palette);
    case QStyle::PE_Frame:
        return isDark(option.palette) ? outlineColor(option, kFaint) : QColor();
    default:
        return {};
    }
}

void drawOutline(QStyle::PrimitiveElement element, const QStyleOption& option, const QColor& color,
                 QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(color);
    const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == QStyle::PE_IndicatorRadioButton)
        painter.drawEllipse(frame);
    else if (element == QStyle::PE_Frame)
        painter.drawRect(frame);
    else
        painter.drawRoundedRect(frame, 2, 2);
    painter.restore();
}

/// A picture without its colours, and so faint that it is told from an enabled one on any ground.
QPixmap faded(const QPixmap& pixmap) {
    constexpr double kOpacity = 0.45;
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int gray = qGray(line[x]);
            line[x] = qRgba(gray, gray, gray, static_cast<int>(qAlpha(line[x]) * kOpacity));
        }
    }
    return QPixmap::fromImage(image);
}

/// A picture drawn towards the colour of selected texts, for it lies on the highlight.
QPixmap highlighted(const QPixmap& pixmap, QColor text) {
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    text.setAlpha(200);
    painter.fillRect(QRect(QPoint(0, 0), image.size()), text);
    painter.end();
    return QPixmap::fromImage(image);
}

} // namespace

KorStyle::KorStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

QColor KorStyle::lineColor(const QPalette& palette, QPalette::ColorRole ground) {
    constexpr double kShareOfText = 0.25;
    return KorReadable::mixed(palette.color(ground), palette.color(QPalette::Text), kShareOfText);
}

QColor KorStyle::markColor(const QPalette& palette) {
    return seen(palette, palette.color(QPalette::Window), 1.05);
}

QColor KorStyle::focusColor(const QPalette& palette) {
    return seen(palette, palette.color(QPalette::Highlight), 1.05);
}

void KorStyle::setNoteColor(QWidget& words, bool on) {
    for (QObject* part : words.children())
        if (auto* colors = dynamic_cast<KorOwnColors*>(part))
            return colors->setOn(on);
    if (on)
        new KorOwnColors(&words, [](QPalette& own, const QPalette& around) {
            own.setColor(QPalette::WindowText, isDark(around) ? QColor(255, 150, 130) : QColor(170, 20, 20));
        });
}

void KorStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    // A field's frame is its outline; what has the focus glows inside of it. In lists that would lie over the
    // text.
    const bool isOutline =
        (element == PE_FrameLineEdit && !(option->state & State_HasFocus)) || element == PE_FrameFocusRect;
    if (!isOutline)
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (const QColor color = outlineOf(element, *option); color.isValid())
        drawOutline(element, *option, color, *painter);
}

void KorStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control != CC_ToolButton && control != CC_ComboBox) || (option->state & kFocused) != kFocused)
        return;
    QStyleOptionFocusRect frame;
    frame.QStyleOption::operator=(*option);
    frame.rect = control == CC_ToolButton ? option->rect.adjusted(1, 1, -1, -1) : option->rect;
    drawPrimitive(PE_FrameFocusRect, &frame, painter, widget);
}

QSize KorStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                 const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    constexpr int kBeforeArrow = 8; // else the text runs into the arrow of the menu
    if (type == CT_PushButton && button && (button->features & QStyleOptionButton::HasMenu))
        result.rwidth() += kBeforeArrow;
    return result;
}

int KorStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returned) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, returned);
}

QIcon KorStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                             const QWidget* widget) const {
    switch (picture) {
    case SP_MessageBoxInformation:
        return KorPictures::bitmap(1621);
    case SP_MessageBoxWarning:
        return KorPictures::bitmap(1622);
    case SP_MessageBoxCritical:
        return KorPictures::bitmap(1623);
    case SP_MessageBoxQuestion:
        return KorPictures::bitmap(1624);
    default:
        return QProxyStyle::standardIcon(picture, option, widget);
    }
}

QPixmap KorStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                      const QStyleOption* option) const {
    switch (mode) {
    case QIcon::Disabled:
        return faded(pixmap);
    case QIcon::Selected:
        return highlighted(pixmap, option->palette.color(QPalette::Active, QPalette::HighlightedText));
    default:
        return pixmap;
    }
}
