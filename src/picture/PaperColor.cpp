#include "picture/PaperColor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using PaperColor::eGround;
using PaperColor::Rgb;

constexpr std::array<Rgb, 10> kOnPaper = {{{0, 0, 0},
                                           {192, 0, 0},
                                           {160, 128, 0},
                                           {0, 128, 0},
                                           {0, 128, 128},
                                           {0, 0, 192},
                                           {160, 0, 160},
                                           {0, 0, 0},
                                           {96, 96, 96},
                                           {144, 144, 144}}};
constexpr std::array<Rgb, 10> kOnDark = {{{240, 240, 240},
                                          {255, 96, 96},
                                          {240, 220, 80},
                                          {96, 224, 96},
                                          {80, 220, 220},
                                          {128, 160, 255},
                                          {240, 128, 240},
                                          {240, 240, 240},
                                          {168, 168, 168},
                                          {128, 128, 128}}};

} // namespace

Rgb PaperColor::ground(eGround ground) {
    return ground == eGround::kDark ? Rgb{30, 33, 36} : Rgb{255, 255, 255};
}

Rgb PaperColor::of(int color, eGround ground) {
    const bool isDark = ground == eGround::kDark;
    if (color >= 0 && color < static_cast<int>(kOnPaper.size()))
        return (isDark ? kOnDark : kOnPaper)[static_cast<std::size_t>(color)];
    if (color < 0 || color > 255)
        return of(7, ground);
    if (color >= 250)
        return isDark ? Rgb{190, 190, 190} : Rgb{64, 64, 64};
    // 10 to 249: a wheel of hues, each in five shades.
    const int turn = (color - 10) / 10;
    const int shade = color % 10 / 2;
    const double hue = turn * 15.0;
    const double strength = (isDark ? 1.0 : 0.75) - shade * 0.12;
    const double pale = isDark ? 0.35 : 0.0;
    const auto part = [&](double shift) {
        const double place = std::fmod(hue + shift, 360.0) / 60;
        const double level = std::clamp(std::abs(place - 3) - 1, 0.0, 1.0);
        return static_cast<int>(std::lround(strength * (pale + (1 - pale) * level) * 255));
    };
    return {part(0), part(240), part(120)};
}

Rgb PaperColor::highlight(eGround ground) {
    return ground == eGround::kDark ? Rgb{255, 170, 60} : Rgb{214, 80, 0};
}

Rgb PaperColor::paleHighlight(eGround ground) {
    return ground == eGround::kDark ? Rgb{92, 70, 44} : Rgb{255, 232, 214};
}
