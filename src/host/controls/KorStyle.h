#pragma once

#include <QPalette>
#include <QProxyStyle>

/// The look of the program: Fusion, with fields, check boxes, radio buttons and a frame around what has the
/// focus that can be seen in any palette, also on tool buttons that were reached by the keyboard, and
/// pictures that can be told apart when they are selected or disabled, on light and dark.
class KorStyle : public QProxyStyle {
    Q_OBJECT

public:
    KorStyle();

    /// What the accessibility guidelines ask of what must be seen and is no text.
    static constexpr double kContrast = 3.0;
    /// The colour of what must be seen on the grounds that controls stand on: outlines, grips.
    static QColor markColor(const QPalette& palette);
    /// The colour of the frame around what has the focus: the highlight, so far that it is seen as well.
    static QColor focusColor(const QPalette& palette);

    /// The colour of thin lines that divide what stands on `ground`: seen, not shouting, in any palette.
    static QColor lineColor(const QPalette& palette, QPalette::ColorRole ground);

    /// Shows words on a window in the colour of those that warn, read easily in whatever palette comes, or as
    /// all others.
    static void setNoteColor(QWidget& words, bool on);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    /// Buttons of message boxes have words alone, as those of the other dialogs.
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    /// The pictures of message boxes are the program's own; all others those of Fusion.
    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                       const QWidget* widget) const override;
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                const QStyleOption* option) const override;
};
