#pragma once

#include <QPalette>
#include <QProxyStyle>

/// The look of the program: Fusion, with check boxes and radio buttons that can be seen in dark palettes,
/// and a focus frame on tool buttons that were reached by the keyboard.
class KorStyle : public QProxyStyle {
    Q_OBJECT

public:
    KorStyle();

    /// A complete light or dark palette that goes with this style.
    static QPalette palette(bool dark);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};
