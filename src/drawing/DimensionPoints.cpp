#include "drawing/DimensionPoints.h"

#include "drawing/ObjectMatch.h"
#include "drawing/PointRestriction.h"

namespace {

enum ePointType {
    kAxisEnd,
    kCorner,
    kHoleCentre,
    kGroupCentre,
    kWorkPoint,
    kCrossing,
    kWeldStart,
    kLevelMark
};
enum ePosition { kAnywhere, kAtStart, kAtEnd, kBetween, kNearSide, kFarSide };
constexpr int kExtremesOnly = 7;

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

// Where an object sits on the axis of the main one: a profile where its own axis passes that one.
Vec3 onMainAxis(const PartObject& object, const PartObject& main) {
    const double same = dot(object.axis, main.axis);
    Vec3 at = object.box.middle();
    if (std::abs(same) < 0.9 && object.type == eObjectType::kProfile) {
        const Vec3 between = main.start - object.start;
        const double own = (dot(between, object.axis) - same * dot(between, main.axis)) / (1 - same * same);
        at = object.start + object.axis * own;
    }
    return main.start + main.axis * dot(at - main.start, main.axis);
}

std::vector<Vec3> corners(const PartObject& object) {
    std::vector<Vec3> found;
    for (const Edge& edge : object.solid.edges) {
        found.push_back(edge.a);
        found.push_back(edge.b);
    }
    return found.empty() ? object.centres : found;
}

// Treads are measured at the upper edge of their front.
std::vector<Vec3> nosing(const PartObject& object) {
    return {{object.box.low.x, object.box.low.y, object.box.high.z}};
}

std::vector<Vec3> pointsOn(const DrawingContext& context, const ViewScene& scene, int type,
                           const PartObject& object) {
    switch (type) {
    case kCorner:
        return object.type == eObjectType::kGrating ? nosing(object) : corners(object);
    case kHoleCentre: {
        std::vector<Vec3> found = object.centres;
        for (const int index : context.shown)
            if (const PartObject& hole = context.object(index);
                hole.type == eObjectType::kHole && scene.looks.at(index).drawn &&
                std::ranges::find(hole.in, object.name) != hole.in.end())
                found.insert(found.end(), hole.centres.begin(), hole.centres.end());
        return found;
    }
    case kGroupCentre: {
        Box3 box;
        std::ranges::for_each(object.centres, [&](const Vec3& p) { box.add(p); });
        return box.isEmpty() ? std::vector<Vec3>() : std::vector{box.middle()};
    }
    case kCrossing:
        if (object.type == eObjectType::kGrid)
            return {(object.start + object.end) * 0.5};
        return {onMainAxis(object, *context.part.main())};
    case kWeldStart:
    case kLevelMark:
        return {object.start};
    default:
        return {object.start, object.end};
    }
}

bool fitsPosition(const DrawingContext& context, const ViewScene& scene, int position, const Vec3& p) {
    const PartObject& main = *context.part.main();
    const double length = (main.end - main.start).length();
    const double t = dot(p - main.start, main.axis);
    const double middle = scene.camera.depth(main.box.middle());
    switch (position) {
    case kAtStart:
        return t < length / 2;
    case kAtEnd:
        return t > length / 2;
    case kBetween:
        return t > 1 && t < length - 1;
    case kNearSide:
        return scene.camera.depth(p) <= middle + 0.5;
    case kFarSide:
        return scene.camera.depth(p) >= middle - 0.5;
    default:
        return true;
    }
}

// Whether a line of the grid runs in the direction that is measured.
bool isParallel(const ViewScene& scene, const PartObject& line, Vec2 direction) {
    const Vec2 d = scene.camera.flat(line.end) - scene.camera.flat(line.start);
    return d.length() > 1 && std::abs(cross(d, direction)) < 0.01 * d.length();
}

// Whether a line through the point across the measured direction passes the window.
bool isAlongside(const Box2& window, Vec2 p, Vec2 direction) {
    Vec2 reach = {1e300, -1e300};
    for (const Vec2 corner :
         {window.low, Vec2{window.high.u, window.low.v}, window.high, Vec2{window.low.u, window.high.v}})
        reach = {std::min(reach.u, along(corner, direction)), std::max(reach.v, along(corner, direction))};
    return along(p, direction) >= reach.u && along(p, direction) <= reach.v;
}

bool isSeen(const ViewScene& scene, int index) {
    return std::ranges::any_of(scene.seen.lines,
                               [&](const ViewLine& line) { return line.object == index && line.visible; });
}

// Whether what is seen of an object reaches as far as its axis, though that lies before or behind what is
// shown.
bool isSeenNear(const ViewScene& scene, int index, Vec2 flat) {
    constexpr double kNear = 100; // mm, of ends that are cut at a slope
    return std::ranges::any_of(scene.seen.lines, [&](const ViewLine& line) {
        return line.object == index && line.visible &&
               std::min((line.a - flat).length(), (line.b - flat).length()) < kNear;
    });
}

// Those that are nearest to the start or end of the main part, where they are asked for there; else the
// first.
void keepOutermost(const DrawingContext& context, std::vector<DimensionPoint>& points, std::size_t count,
                   int place) {
    if (points.size() <= count)
        return;
    const PartObject& main = *context.part.main();
    const double away = place == kAtEnd ? -1 : place == kAtStart ? 1 : 0;
    std::vector<DimensionPoint> kept = points;
    std::ranges::stable_sort(
        kept, {}, [&](const DimensionPoint& p) { return away * dot(p.model - main.start, main.axis); });
    kept.resize(count);
    std::erase_if(points, [&](const DimensionPoint& p) {
        return std::ranges::none_of(kept, [&](const DimensionPoint& k) {
            return k.object == p.object && (k.model - p.model).length() == 0;
        });
    });
}

} // namespace

void keepEachPlaceOnce(std::vector<DimensionPoint>& points, Vec2 direction, double sameness) {
    const Vec2 normal = {direction.v, -direction.u};
    // Of several at one place the one nearest to the line is kept.
    std::ranges::stable_sort(points, {}, [&](const DimensionPoint& p) {
        return std::pair(std::lround(along(p.flat, direction) * 2), -along(p.flat, normal));
    });
    const auto same = [&](const DimensionPoint& a, const DimensionPoint& b) {
        return std::abs(along(a.flat, direction) - along(b.flat, direction)) < sameness;
    };
    points.erase(std::unique(points.begin(), points.end(), same), points.end());
}

std::vector<DimensionPoint> pointsOf(DrawingContext& context, const ViewScene& scene, std::int32_t selection,
                                     Vec2 direction) {
    const auto* record = context.rows.row<StructDetViewDimPointSelection>(selection);
    std::vector<DimensionPoint> points;
    if (!record)
        return points;
    const auto* type = context.rows.row<StructDetViewDimPointtype>(record->pointTypeKey);
    const auto* position = context.rows.row<StructDetVwDimParentRelaPosRestriction>(record->parentRelaPosKey);
    const auto* restriction = context.rows.row<StructDetVwDimGeomRestrictions>(record->geomRestrictionsKey);
    const int kind = type ? type->pointType : static_cast<int>(kAxisEnd);
    const int place = position ? position->position : static_cast<int>(kAnywhere);
    PointRestriction further(context, scene, record->geometricRestrictionKey);
    const Box2& window = scene.camera.window;
    for (const auto& [index, look] : scene.looks) {
        const PartObject& object = context.object(index);
        const bool isLine = object.type == eObjectType::kGrid || object.type == eObjectType::kLevel ||
                            object.type == eObjectType::kCut;
        if (ObjectMatch::picks(context.rows, record->qualifierSetKey, object) != eAnswer::kYes ||
            (!isLine && !(look.drawn && (record->includeHidden != 0 || isSeen(scene, index)))))
            continue;
        if (object.type == eObjectType::kGrid && isParallel(scene, object, direction))
            continue;
        std::vector<DimensionPoint> own;
        for (const Vec3& p : pointsOn(context, scene, kind, object)) {
            const Vec2 flat = scene.camera.flat(p);
            const double depth = scene.camera.depth(p);
            const bool isInside = flat.u >= window.low.u && flat.u <= window.high.u &&
                                  flat.v >= window.low.v && flat.v <= window.high.v &&
                                  ((depth >= scene.camera.nearDepth && depth <= scene.camera.farDepth) ||
                                   (kind == kAxisEnd && isSeenNear(scene, index, flat)));
            if ((isLine ? isAlongside(window, flat, direction) : isInside) &&
                fitsPosition(context, scene, place, p) && further.allows(object, p, direction))
                own.push_back({p, flat, index});
        }
        keepEachPlaceOnce(own, direction);
        if (restriction && restriction->restriction == kExtremesOnly && own.size() > 2)
            own.erase(own.begin() + 1, own.end() - 1);
        points.insert(points.end(), own.begin(), own.end());
    }
    keepEachPlaceOnce(points, direction, further.sameness());
    if (record->maximumCount > 0)
        keepOutermost(context, points, static_cast<std::size_t>(record->maximumCount), place);
    return points;
}
