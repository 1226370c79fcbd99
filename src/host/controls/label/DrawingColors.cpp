#include "controls/label/DrawingColors.h"

#include "controls/KorReadable.h"

#include <array>

using KorReadable::contrast;

namespace {

// 10 to 249: 24 hues of ten shades; even ones are pure, odd ones pale, both in five steps to dark.
QColor hueShade(int number) {
    constexpr std::array<int, 5> kValues = {255, 165, 127, 76, 38};
    const int shade = number % 10;
    return QColor::fromHsv((number / 10 - 1) * 15, shade % 2 ? 128 : 255,
                           kValues[static_cast<std::size_t>(shade / 2)]);
}

} // namespace

namespace DrawingColors {

QColor foreground(const QColor& background) {
    return contrast(Qt::white, background) >= contrast(Qt::black, background) ? Qt::white : Qt::black;
}

QColor swatch(int number, const QColor& background) {
    static const std::array<QColor, 10> named = {QColor(),
                                                 QColor(255, 0, 0),
                                                 QColor(255, 255, 0),
                                                 QColor(0, 255, 0),
                                                 QColor(0, 255, 255),
                                                 QColor(0, 0, 255),
                                                 QColor(255, 0, 255),
                                                 QColor(),
                                                 QColor(128, 128, 128),
                                                 QColor(192, 192, 192)};
    if (number <= kByBlock || number == kForeground || number >= kByLayer)
        return foreground(background);
    if (number < 10)
        return named[static_cast<std::size_t>(number)];
    if (number < 250)
        return hueShade(number);
    const int grey = 51 + (number - 250) * 204 / 5;
    return QColor(grey, grey, grey);
}

QColor readable(int number, const QColor& background) {
    return KorReadable::moved(swatch(number, background), foreground(background), [&](const QColor& color) {
        return contrast(color, background) >= KorReadable::kContrast;
    });
}

} // namespace DrawingColors
