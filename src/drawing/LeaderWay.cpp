#include "drawing/LeaderWay.h"

std::vector<Vec2> leaderWay(const LeaderShape& shape, Vec2 middle, Vec2 size, Vec2 anchor) {
    const Vec2 half = size * 0.5;
    const Vec2 away = anchor - middle;
    if (std::abs(away.u) < half.u + 0.5 && std::abs(away.v) < half.v + 1)
        return {};
    const bool isUponLine = shape.from == LeaderShape::kLine || shape.from == LeaderShape::kSymbol;
    const double outward = away.u > 0 ? 1 : -1;
    const double room = std::clamp(std::abs(away.u) - half.u, 0.0, shape.landing);
    const bool isInLine = shape.from != LeaderShape::kSymbol && std::abs(away.u) <= half.u;
    const double below = isUponLine ? half.v + 0.6 : half.v;
    Vec2 edge = middle + Vec2{outward * half.u, isUponLine ? -below : 0};
    if (shape.from == LeaderShape::kRing)
        edge = middle + away * (half.u / away.length());
    else if (isInLine)
        edge = middle + Vec2{outward * half.u, away.v > 0 ? below : -below};
    const Vec2 knee = shape.from == LeaderShape::kRing ? edge : edge + Vec2{outward * room, 0};
    const Vec2 way = anchor - knee;
    const Vec2 end = anchor - way * (std::min(shape.rim, way.length()) / std::max(way.length(), 1e-9));
    if ((end - knee).length() < 1)
        return {};
    return {edge, knee, end};
}
