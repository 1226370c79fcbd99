#include "drawing/ProfileOutline.h"

#include <array>
#include <numbers>

namespace {

struct Family {
    const char* name;
    std::size_t measures;
    Outline (*make)(const std::vector<double>&);
};

// A quarter turn between two flat faces that would meet in `corner`: from `from` to `to`, hollow or not.
void addRoot(Outline::Piece& piece, Vec2 centre, double radius, double startDegrees, double endDegrees) {
    constexpr int kPieces = 4;
    for (int i = 0; i <= kPieces; ++i) {
        const double angle =
            (startDegrees + (endDegrees - startDegrees) * i / kPieces) * std::numbers::pi / 180;
        piece.corners.push_back(centre + Vec2{std::cos(angle), std::sin(angle)} * radius);
        piece.smooth.push_back(true);
    }
}

void addSharp(Outline::Piece& piece, std::initializer_list<Vec2> corners) {
    for (const Vec2 corner : corners) {
        piece.corners.push_back(corner);
        piece.smooth.push_back(false);
    }
}

Outline doubleT(const std::vector<double>& m) {
    const double h = m[0] / 2, b = m[1] / 2, w = m[2] / 2, f = h - m[3];
    const double r = m.size() > 4 ? m[4] : 0;
    Outline::Piece piece;
    addSharp(piece, {{b, -h}, {b, -f}});
    addRoot(piece, {w + r, -f + r}, r, 270, 180);
    addRoot(piece, {w + r, f - r}, r, 180, 90);
    addSharp(piece, {{b, f}, {b, h}, {-b, h}, {-b, f}});
    addRoot(piece, {-w - r, f - r}, r, 90, 0);
    addRoot(piece, {-w - r, -f + r}, r, 0, -90);
    addSharp(piece, {{-b, -f}, {-b, -h}});
    return {{piece}};
}

Outline channel(const std::vector<double>& m) {
    const double h = m[0] / 2, b = m[1] / 2, f = h - m[3], w = -b + m[2];
    const double r = m.size() > 4 ? m[4] : 0;
    Outline::Piece piece;
    addSharp(piece, {{-b, -h}, {b, -h}, {b, -f}});
    addRoot(piece, {w + r, -f + r}, r, 270, 180);
    addRoot(piece, {w + r, f - r}, r, 180, 90);
    addSharp(piece, {{b, f}, {b, h}, {-b, h}});
    return {{piece}};
}

Outline angle(const std::vector<double>& m) {
    const double h = m[0] / 2, b = m[1] / 2, t = m[2];
    return {{{{{-b, -h}, {b, -h}, {b, -h + t}, {-b + t, -h + t}, {-b + t, h}, {-b, h}}, false, {}}}};
}

Outline rectangularTube(const std::vector<double>& m) {
    const double h = m[0] / 2, b = m[1] / 2, t = m[2];
    Outline outline = Outline::rectangle({-b, -h}, {b, h});
    outline.pieces.push_back(Outline::rectangle({-b + t, -h + t}, {b - t, h - t}).pieces[0]);
    return outline;
}

Outline roundTube(const std::vector<double>& m) {
    return {{Outline::circle({}, m[0] / 2), Outline::circle({}, m[0] / 2 - m[1])}};
}

Outline bar(const std::vector<double>& m) {
    return {{Outline::circle({}, m[0] / 2)}};
}

Outline flat(const std::vector<double>& m) {
    return Outline::rectangle({-m[1] / 2, -m[0] / 2}, {m[1] / 2, m[0] / 2});
}

// Cold formed: a strip of one thickness along a line; `turn` says to which side the upper flange goes.
Outline strip(const std::vector<double>& m, double turn) {
    const double h = m[0] / 2, b = m[1], lip = m[2], t = m[3];
    if (turn > 0) { // both flanges to one side
        const double l = -b / 2, r = b / 2;
        return {{{{{r, -h + lip},
                   {r, -h},
                   {l, -h},
                   {l, h},
                   {r, h},
                   {r, h - lip},
                   {r - t, h - lip},
                   {r - t, h - t},
                   {l + t, h - t},
                   {l + t, -h + t},
                   {r - t, -h + t},
                   {r - t, -h + lip}},
                  false,
                  {}}}};
    }
    const double w = t / 2;
    return {{{{{-b, -h},
               {w, -h},
               {w, h - t},
               {b - t, h - t},
               {b - t, h - lip},
               {b, h - lip},
               {b, h},
               {-w, h},
               {-w, -h + t},
               {-b + t, -h + t},
               {-b + t, -h + lip},
               {-b, -h + lip}},
              false,
              {}}}};
}

constexpr std::array<Family, 11> kFamilies = {{
    {"I", 4, doubleT},
    {"H", 4, doubleT},
    {"U", 4, channel},
    {"L", 3, angle},
    {"RHS", 3, rectangularTube},
    {"SHS", 3, rectangularTube},
    {"CHS", 2, roundTube},
    {"RD", 1, bar},
    {"FL", 2, flat},
    {"C", 4, [](const std::vector<double>& m) { return strip(m, 1); }},
    {"Z", 4, [](const std::vector<double>& m) { return strip(m, -1); }},
}};

} // namespace

Outline profileOutline(const std::string& family, const std::vector<double>& measures) {
    for (const Family& known : kFamilies)
        if (family == known.name && measures.size() >= known.measures &&
            std::ranges::all_of(measures, [](double m) { return m > 0; }))
            return known.make(measures);
    return {};
}
