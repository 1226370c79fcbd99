#include "controls/KorReadable.h"

#include "controls/KorOwnColors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Role = QPalette::ColorRole;

/// A kind of text, the ordinary text that it goes with, and what it stands on.
struct TextRow {
    Role text;
    Role ordinary;
    std::vector<Role> grounds;
};

const std::vector<TextRow>& textRows() {
    static const std::vector<TextRow> rows = {
        {QPalette::WindowText, QPalette::WindowText, {QPalette::Window, QPalette::Button}},
        {QPalette::Text, QPalette::Text, {QPalette::Base, QPalette::AlternateBase, QPalette::Window}},
        {QPalette::ButtonText, QPalette::ButtonText, {QPalette::Button, QPalette::Window}},
        {QPalette::PlaceholderText, QPalette::Text, {QPalette::Base, QPalette::Button, QPalette::Window}},
    };
    return rows;
}

// Styles shade the grounds a little: buttons are brighter at the top.
constexpr double kWanted = KorReadable::kContrast * 1.15;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// The light of each value of a channel: outlines ask for it hundreds of times in each picture of a page.
const std::array<double, 256>& light() {
    static const std::array<double, 256> values = [] {
        std::array<double, 256> of{};
        for (std::size_t value = 0; value < of.size(); ++value)
            of[value] = linear(static_cast<double>(value) / 255);
        return of;
    }();
    return values;
}

double luminance(const QColor& color) {
    const QRgb rgb = color.rgb();
    const auto of = [](int channel) { return light()[static_cast<std::size_t>(channel)]; };
    return 0.2126 * of(qRed(rgb)) + 0.7152 * of(qGreen(rgb)) + 0.0722 * of(qBlue(rgb));
}

QColor opaque(const QColor& color) {
    return QColor(color.rgb());
}

/// The lowest contrast of the text on the row's grounds.
double lowestContrast(const QPalette& palette, QPalette::ColorGroup group, const TextRow& row,
                      const QColor& text) {
    double lowest = 21;
    for (const Role role : row.grounds) {
        lowest = std::min(lowest, KorReadable::contrast(text, opaque(palette.color(group, role))));
    }
    return lowest;
}

QColor readableText(const QPalette& palette, QPalette::ColorGroup group, const TextRow& row) {
    const QColor given = palette.color(group, row.text);
    const QColor end = opaque(palette.color(QPalette::Active, row.ordinary));
    const QColor ground = opaque(palette.color(group, row.grounds.front()));
    const QColor seen = KorReadable::mixed(ground, opaque(given), given.alphaF());
    return KorReadable::moved(
        seen, end, [&](const QColor& text) { return lowestContrast(palette, group, row, text) >= kWanted; });
}

} // namespace

double KorReadable::contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor KorReadable::mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

QColor KorReadable::moved(const QColor& color, const QColor& end,
                          const std::function<bool(const QColor&)>& isEnough) {
    constexpr int kSteps = 20;
    QColor reached = color;
    for (int step = 1; step <= kSteps && !isEnough(reached); ++step)
        reached = mixed(color, end, step / static_cast<double>(kSteps));
    return reached;
}

QPalette KorReadable::palette(const QPalette& palette) {
    QPalette readable = palette;
    for (const TextRow& row : textRows()) {
        readable.setColor(QPalette::Disabled, row.text, readableText(palette, QPalette::Disabled, row));
        if (row.text == QPalette::PlaceholderText)
            for (const auto group : {QPalette::Active, QPalette::Inactive})
                readable.setColor(group, row.text, readableText(palette, group, row));
    }
    return readable;
}

void KorReadable::keep(QWidget* root) {
    new KorOwnColors(root, [](QPalette& own, const QPalette& around) {
        const QPalette readable = KorReadable::palette(around);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            for (const TextRow& row : textRows())
                if (readable.color(group, row.text) != around.color(group, row.text))
                    own.setColor(group, row.text, readable.color(group, row.text));
    });
}
