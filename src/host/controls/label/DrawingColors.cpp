#include "controls/label/DrawingColors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kReadableContrast = 3; // what the accessibility guidelines ask of large text

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// 1 (the same) to 21 (black on white).
double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

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
    const QColor pure = swatch(number, background);
    const QColor end = foreground(background);
    QColor color = pure;
    for (double share = 0.05; share <= 1 && contrast(color, background) < kReadableContrast; share += 0.05)
        color = mixed(pure, end, share);
    return color;
}

QColor mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace DrawingColors
