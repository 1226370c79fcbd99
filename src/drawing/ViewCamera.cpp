#include "drawing/ViewCamera.h"

#include "base/Translation.h"

#include <numbers>

namespace {

constexpr double kAlong = 0.7; // a direction counts as along an axis from here on

enum eSystem { kPartSystem, kAssemblySystem, kMainPartSystem, kModelSystem, kWorkingPlane, kFlange, kWeb };
enum ePosition { kCentre, kFrontFace, kBackFace, kTopFlange, kBottomFlange, kNearStart, kNearEnd };
enum eReference { kSystemAxis, kCentreLine, kTopEdge, kBottomEdge, kLeftEdge, kRightEdge };

// The axes of the object that a system is taken from.
Frame ownAxes(int source, const SamplePart& part) {
    const bool isOwn =
        source == kPartSystem || source == kMainPartSystem || source == kFlange || source == kWeb;
    return isOwn ? part.main()->frame : Frame{};
}

Frame systemOf(int source, const SamplePart& part) {
    Frame frame = ownAxes(source, part);
    if (source == kFlange) // whoever looks at its front looks down upon the flange
        frame = {frame.origin, frame.x, frame.z * -1, frame.y};
    return frame;
}

// The axes of a view in its system.
Frame oriented(int orientation, double degrees) {
    const double flatAngle = std::numbers::pi / 4;
    const double tilt = std::asin(std::clamp(std::tan(std::abs(degrees) * std::numbers::pi / 180), 0.0, 1.0));
    const auto isometric = [&](double side) {
        const Vec3 right = {std::cos(flatAngle), -side * std::sin(flatAngle), 0};
        const Vec3 away = {side * std::sin(flatAngle) * std::cos(tilt), std::cos(flatAngle) * std::cos(tilt),
                           -std::sin(tilt)};
        return Frame{{}, right, away, cross(right, away)};
    };
    switch (orientation) {
    case 1:
        return {{}, {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}};
    case 2:
        return {{}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}};
    case 3:
        return {{}, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}};
    case 4:
        return {{}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}};
    case 5:
        return {{}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    case 6:
        return isometric(1);
    case 7:
        return isometric(-1);
    default:
        return {};
    }
}

// Where the plane of the view lies, as a depth. `box` is what the view shows, as the view sees it.
double planeDepth(const StructDetailDepthPosition* position, const Frame& axes, const Frame& view,
                  const Box3& box) {
    const double middle = box.middle().y;
    if (!position)
        return middle;
    const double up = dot(view.y, axes.z);
    const double along = dot(view.y, axes.x);
    switch (position->position) {
    case kFrontFace:
        return box.low.y + position->distance;
    case kBackFace:
        return box.high.y + position->distance;
    case kTopFlange:
    case kBottomFlange:
        if (std::abs(up) < kAlong)
            return middle + position->distance;
        return ((up < 0) == (position->position == kTopFlange) ? box.low.y : box.high.y) + position->distance;
    case kNearStart:
    case kNearEnd:
        if (std::abs(along) < kAlong)
            return middle;
        return (along > 0) == (position->position == kNearStart) ? box.low.y + position->distance
                                                                 : box.high.y - position->distance;
    default:
        return middle + position->distance;
    }
}

Vec2 referenceOf(int axis, const Vec2& onAxis, const Box2& box) {
    switch (axis) {
    case kCentreLine:
        return {onAxis.u, box.middle().v};
    case kTopEdge:
        return {onAxis.u, box.high.v};
    case kBottomEdge:
        return {onAxis.u, box.low.v};
    case kLeftEdge:
        return {box.low.u, box.middle().v};
    case kRightEdge:
        return {box.high.u, box.middle().v};
    default:
        return onAxis;
    }
}

Frame turned(Frame frame, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const Vec3 right = frame.x * std::cos(angle) - frame.z * std::sin(angle);
    const Vec3 up = frame.x * std::sin(angle) + frame.z * std::cos(angle);
    return {frame.origin, right, frame.y, up};
}

// What the box of a view is measured from: the part alone, an area of it, or all that is shown.
Box3 measured(int source, const StructDetailAreaType* area, const SamplePart& part,
              const std::vector<int>& shown, const Frame& frame) {
    if (area)
        if (const auto named = part.areas.find(area->areaType); named != part.areas.end())
            return named->second.seenFrom(frame);
    Box3 box;
    const auto add = [&](const PartObject& object) {
        for (const Face& face : object.solid.faces)
            for (const Loop3& loop : face.loops)
                for (const Vec3& corner : loop)
                    box.add(frame.in(corner));
        if (object.solid.faces.empty())
            box.add(object.box.seenFrom(frame));
    };
    if (source == kPartSystem || source == kFlange || source == kWeb)
        add(*part.main());
    else
        for (const int index : shown)
            if (const PartObject& object = part.objects[static_cast<std::size_t>(index)];
                object.role != eObjectRole::kNeighbour && object.type != eObjectType::kGrid &&
                object.type != eObjectType::kLevel)
                add(object);
    if (box.isEmpty())
        for (const PartObject& object : part.objects)
            add(object);
    return box;
}

} // namespace

ViewCamera ViewCameras::of(StyleRows& rows, const StructDetViewRequest& view, const SamplePart& part,
                           const std::vector<int>& shown) {
    static const StructDetViewSystemAndBox kPlain;
    const auto* wanted = rows.row<StructDetViewSystemAndBox>(view.systemAndBoxKey);
    const StructDetViewSystemAndBox& box = wanted ? *wanted : kPlain;
    const auto* source = rows.row<StructDetViewSystemSource>(box.systemSourceKey);
    const auto* orientation = rows.row<StructDetailOrientation>(box.orientationKey);
    const auto* axis = rows.row<StructDetailReferenceAxis>(box.referenceAxisKey);
    const auto* position = rows.row<StructDetailDepthPosition>(
        view.depthPositionKey > 0 ? view.depthPositionKey : box.depthPositionKey);
    const auto* area = rows.row<StructDetailAreaType>(view.areaTypeKey);
    const int sourceNumber = source ? source->source : static_cast<int>(kAssemblySystem);

    const Frame system = systemOf(sourceNumber, part);
    const Frame axes =
        oriented(orientation ? orientation->orientation : 0, orientation ? orientation->angle : 0);
    ViewCamera camera;
    camera.mirrored = box.mirrored != 0;
    camera.frame = turned(
        {system.origin, system.turned(axes.x), system.turned(axes.y), system.turned(axes.z)}, box.rotation);
    const Box3 seen = measured(sourceNumber, area, part, shown, camera.frame);
    const double plane = planeDepth(position, ownAxes(sourceNumber, part), camera.frame, seen);
    camera.nearDepth = plane - box.boxFrontDepth;
    camera.farDepth = plane + box.boxBackDepth;
    Box2 flat;
    flat.add(Vec2{camera.mirrored ? -seen.low.x : seen.low.x, seen.low.z});
    flat.add(Vec2{camera.mirrored ? -seen.high.x : seen.high.x, seen.high.z});
    const Vec2 margin = {box.boxMargin, box.boxMargin};
    camera.window.add(flat.low - margin);
    camera.window.add(flat.high + margin);
    const Vec2 onAxis = camera.flat(part.main()->frame.origin);
    camera.reference = referenceOf(axis ? axis->axis : 0, onAxis, flat);
    return camera;
}

ViewCamera ViewCameras::opposite(ViewCamera camera) {
    camera.frame.x = camera.frame.x * -1;
    camera.frame.y = camera.frame.y * -1;
    camera.mirrored = !camera.mirrored; // so that both lie upon each other
    const double nearDepth = camera.nearDepth;
    camera.nearDepth = -camera.farDepth;
    camera.farDepth = -nearDepth;
    return camera;
}
