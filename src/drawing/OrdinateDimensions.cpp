#include "drawing/OrdinateDimensions.h"

#include "drawing/LabelText.h"

namespace {

enum eOrdinatePlace { kAtObject, kOnLine, kAtLineEnd };
enum eOrdinateOrigin { kFromStart, kFromEnd, kFromWorkPoint, kFromGrid };
enum eOrdinateType { kFromOneEnd = 1, kFromBothEnds };

double along(Vec2 p, Vec2 d) {
    return p.u * d.u + p.v * d.v;
}

// Where measuring begins, along the direction.
double originOf(DrawingContext& context, const ViewScene& scene, const StructDetViewDimRequestLinear& request,
                double first, Vec2 direction) {
    const auto* reference = context.rows.row<StructDetOrdinateReference>(request.ordinateReferenceKey);
    const int from = reference ? reference->reference : static_cast<int>(kFromStart);
    double origin = first;
    if (from == kFromEnd) {
        const PartObject& main = *context.part.main();
        origin = std::max(along(scene.camera.flat(main.start), direction),
                          along(scene.camera.flat(main.end), direction));
    }
    double nearest = 1e300;
    for (const int index : context.shown)
        if (const PartObject& object = context.object(index);
            from == kFromGrid && object.type == eObjectType::kGrid) {
            const double place = along(scene.camera.flat(object.start), direction);
            if (std::abs(place - first) < nearest) {
                nearest = std::abs(place - first);
                origin = place;
            }
        }
    return origin;
}

// From the line to the middle of a value.
double room(const std::string& words) {
    return static_cast<double>(words.size()) * kDimensionText * 0.4 + 2.5;
}

} // namespace

void addOrdinates(DrawingContext& context, const ViewScene& scene,
                  const StructDetViewDimRequestLinear& request, const std::vector<DimensionPoint>& all,
                  DimensionLines& lines) {
    if (all.size() < 2)
        return;
    const Vec2 direction = lines.direction();
    const double origin = originOf(context, scene, request, along(all.front().flat, direction), direction);
    const auto* place = context.rows.row<StructDetOrdinatePosition>(request.ordinatePositionKey);
    const auto* kind = context.rows.row<StructDetOrdinateDimType>(request.ordinateTypeKey);
    const int where = place ? place->position : static_cast<int>(kAtObject);
    const auto shown = [&](const DimensionPoint& point) {
        return LabelText::rounded(along(point.flat, direction) - origin, context.rows);
    };
    std::vector<std::string> values;
    for (const DimensionPoint& point : all) {
        values.push_back(LabelText::length(shown(point), context.rows));
        if (kind && kind->ordinateType == kFromBothEnds)
            values.back() += " / " + LabelText::length(shown(all.back()) - shown(point), context.rows);
    }
    const double longest = room(*std::ranges::max_element(values, {}, &std::string::size));
    const double level = lines.next(where == kAtObject ? 2 * longest : 0);
    lines.begin(direction, nearer(context.rows.step(
                                      request, {"ordinate_type", "ordinate_position", "ordinate_reference"}),
                                  lines.provenance()));
    lines.line({lines.onLine(scene.onSheet(all.front().flat), level),
                lines.onLine(scene.onSheet(all.back().flat), level)});
    double next = -1e300; // so that the values stand side by side
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Vec2 from = scene.onSheet(all[i].flat);
        const Vec2 to = lines.onLine(from, level);
        lines.extension(from, to);
        const double middle = room(values[i]);
        const Vec2 normal = lines.normal();
        if (where == kOnLine) {
            lines.textUpon(to, to + direction * (2 * middle), true, true, values[i]);
        } else if (where == kAtObject) { // before its line, behind it, or at its end
            const Vec2 aside = direction * (kDimensionText * 0.8);
            const Vec2 up = normal * middle;
            lines.textAcross(to, {to - aside - up, to + aside - up, to + up}, values[i]);
        } else {
            const double shift = std::max(0.0, next - along(to, direction));
            next = along(to, direction) + shift + kDimensionText * 1.3;
            if (shift > 0.01)
                lines.line({to + normal * kDimensionOvershoot, to + normal * 2.5 + direction * shift});
            lines.text(to + normal * middle + direction * shift, values[i], normal * -1);
        }
    }
}
