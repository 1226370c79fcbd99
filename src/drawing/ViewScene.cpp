#include "drawing/ViewScene.h"

#include "base/Translation.h"
#include "drawing/HiddenLines.h"
#include "drawing/ObjectMatch.h"

namespace {

enum eSelectMode { kAlways, kIfHoles, kIfDifferent, kIfFitted, kOnRequest };
enum eProcess { kKeepScale, kFitSheet, kNextSmaller, kNextLarger, kByFactor };

std::map<int, ObjectLook> looksOf(DrawingContext& context, const StructDetViewRequest& view,
                                  const ProvenancePtr& chain) {
    StyleRows& rows = context.rows;
    const auto* map = rows.row<StructDetObjReprMap>(view.reprMapKey);
    auto entries = ObjectMatch::entriesOf(rows, map ? map->key : 0);
    std::erase_if(entries, [&](const auto* entry) { return context.entriesOff.contains(entry->key); });
    ObjectMatch::Decider decider(rows, std::move(entries));
    const ProvenancePtr ofMap = map ? nearer(rows.step(*map, {"hide_unmatched"}), chain) : chain;
    const auto fitting = [&](const StructDetObjReprMapKey& entry) {
        ObjectLook look;
        look.entry = &entry;
        look.appearance = rows.row<StructDetObjAppearance>(entry.appearanceKey);
        look.provenance = nearer(rows.step(entry, {"order", "qualifier_set", "appearance"}), ofMap);
        return look;
    };
    // What draws an assembly draws those of its objects that nothing else fits.
    ObjectLook rest;
    rest.provenance = ofMap;
    rest.drawn = !map || map->hideUnmatched == 0;
    for (const int index : context.shown)
        if (context.object(index).type == eObjectType::kAssembly)
            if (const auto* entry = decider.decide(context.object(index)).entry) {
                rest = fitting(*entry);
                rest.entry = nullptr;
            }
    std::map<int, ObjectLook> looks;
    for (const int index : context.shown) {
        const ObjectMatch::Decision decision = decider.decide(context.object(index));
        looks[index] = decision.entry ? fitting(*decision.entry) : rest;
        if (decision.isUnknown)
            looks[index].drawn = true; // it may be one of those that are drawn
    }
    return looks;
}

ProvenancePtr chainOf(DrawingContext& context, const StructDetViewRequest& view) {
    ProvenancePtr chain = context.chain;
    if (const auto* box = context.rows.row<StructDetViewSystemAndBox>(view.systemAndBoxKey))
        chain = nearer(context.rows.step(*box, {"system_source", "orientation", "reference_axis",
                                                "depth_position", "box_front_depth", "box_back_depth",
                                                "box_margin", "rotation", "mirrored"}),
                       chain);
    return nearer(context.rows.step(view, {"system_and_box", "repr_map", "depth_position", "select_mode",
                                           "visibility_status", "area_type", "length_clip", "scale",
                                           "process_scale_override", "arrange_direction"}),
                  chain);
}

std::vector<int> bodies(const DrawingContext& context, const std::map<int, ObjectLook>& looks) {
    std::vector<int> found;
    for (const auto& [index, look] : looks)
        if (const eObjectType type = context.object(index).type;
            look.drawn && type != eObjectType::kGrid && type != eObjectType::kLevel)
            found.push_back(index);
    return found;
}

bool hasHoles(const DrawingContext& context, const ViewCamera& camera) {
    return std::ranges::any_of(context.shown, [&](int index) {
        const PartObject& object = context.object(index);
        return object.type == eObjectType::kHole && std::abs(dot(object.axis, camera.frame.y)) > 0.99;
    });
}

bool hasFittings(const DrawingContext& context, const ViewCamera& camera) {
    const double front = context.part.main()->box.seenFrom(camera.frame).low.y;
    return std::ranges::any_of(context.shown, [&](int index) {
        const PartObject& object = context.object(index);
        const bool isFitted = object.role == eObjectRole::kFitting || object.role == eObjectRole::kSecondary;
        return isFitted && object.box.seenFrom(camera.frame).low.y < front - 0.5;
    });
}

bool looksDifferent(const ViewLines& one, const ViewLines& other) {
    const auto visible = [](const ViewLines& seen) {
        std::vector<std::array<long, 4>> lines;
        for (const ViewLine& line : seen.lines)
            if (line.visible) {
                const auto r = [](double value) { return std::lround(value * 2); };
                std::array<long, 4> ends = {r(line.a.u), r(line.a.v), r(line.b.u), r(line.b.v)};
                if (std::pair(ends[0], ends[1]) > std::pair(ends[2], ends[3]))
                    ends = {ends[2], ends[3], ends[0], ends[1]};
                lines.push_back(ends);
            }
        std::ranges::sort(lines);
        return lines;
    };
    return visible(one) != visible(other);
}

LengthClipping::Strategy clippingOf(DrawingContext& context, const StructDetViewRequest& view) {
    LengthClipping::Strategy strategy;
    const auto* clip = context.rows.row<StructDetViewLengthClip>(view.lengthClipKey);
    if (!clip)
        return strategy;
    const auto* type = context.rows.row<StructClippingType>(clip->clippingTypeKey);
    strategy.record = clip;
    strategy.along[0] = clip->alongX != 0;
    strategy.along[1] = clip->alongY != 0;
    strategy.interval = clip->interval;
    strategy.oblique = clip->clipObliqueLines != 0;
    strategy.gap = clip->gap >= 0 ? clip->gap : context.rows.numericDefault("C40_ClipLineDistance", 5);
    strategy.extension =
        clip->extension >= 0 ? clip->extension : context.rows.numericDefault("C40_ClipExtension", 3);
    strategy.type = type ? type->key : 1;
    strategy.linetypeKey = strategy.type == 3 ? 0 : clip->linetypeKey;
    constexpr double kKeptOnSheet = 20; // mm, of styles that clip automatically
    strategy.keep =
        context.style.automaticClipping != 0 ? kKeptOnSheet / std::max(view.scale, 1e-4) : clip->keepEachSide;
    return strategy;
}

Box2 boxOf(const ViewLines& seen, const AxisMap maps[2]) {
    Box2 box;
    for (const ViewLine& line : seen.lines)
        for (const Vec2 p : {line.a, line.b})
            box.add(Vec2{maps[0].at(p.u), maps[1].at(p.v)});
    return box;
}

// The scales that lists offer beside this one, the larger ones first.
std::vector<double> offeredScales(DrawingContext& context, double scale) {
    const auto all = context.rows.rows<StructScale>([](const StructScale&) { return true; });
    const auto same = std::ranges::find_if(
        all, [&](const StructScale* s) { return std::abs(s->factor - scale) < 1e-9 * scale; });
    const int unit = same == all.end() ? 1 : (*same)->unitType;
    std::vector<double> factors;
    for (const StructScale* s : all)
        if (s->unitType == unit && s->factor > 0)
            factors.push_back(s->factor);
    std::ranges::sort(factors, std::greater());
    return factors;
}

double scaleOf(DrawingContext& context, ViewScene& scene,
               const std::vector<std::pair<double, double>> cuts[2]) {
    const double wanted = scene.request->scale > 0 ? scene.request->scale : 0.1;
    const auto* process =
        context.rows.row<StructDetailProcessScaleOverride>(scene.request->processScaleOverrideKey);
    const int mode = process ? process->mode : static_cast<int>(kKeepScale);
    const std::vector<double> offered = offeredScales(context, wanted);
    const auto smaller = std::ranges::find_if(offered, [&](double f) { return f < wanted * (1 - 1e-9); });
    if (mode == kFitSheet) {
        const auto fits = [&](double scale) {
            const AxisMap maps[2] = {{scale, cuts[0], scene.clipping.gap},
                                     {scale, cuts[1], scene.clipping.gap}};
            const Box2 box = boxOf(scene.seen, maps);
            return box.width() <= ViewScenes::kSheet.u && box.height() <= ViewScenes::kSheet.v;
        };
        double scale = wanted;
        for (auto next = smaller; !fits(scale) && next != offered.end(); ++next)
            scale = *next;
        return scale * process->factor;
    }
    if (mode == kNextSmaller)
        return (smaller != offered.end() ? *smaller : wanted) * process->factor;
    if (mode == kNextLarger) {
        double larger = wanted;
        for (const double factor : offered)
            if (factor > wanted * (1 + 1e-9))
                larger = factor;
        return larger * process->factor;
    }
    return mode == kByFactor && process->factor > 0 ? wanted * process->factor : wanted;
}

// Why the view is not drawn for this part; empty where it is.
KorString whyLeftOut(DrawingContext& context, const ViewScene& scene) {
    const auto* mode = context.rows.row<StructDetViewSelectMode>(scene.request->selectModeKey);
    switch (mode ? mode->mode : static_cast<int>(kAlways)) {
    case kIfHoles:
        return hasHoles(context, scene.camera)
                   ? KorString()
                   : translated("The view \"%s\" is left out: the part has no holes on this side.");
    case kIfDifferent: {
        const ViewLines& other =
            context.seen.of(context.part, bodies(context, scene.looks), ViewCameras::opposite(scene.camera));
        return looksDifferent(scene.seen, other)
                   ? KorString()
                   : translated("The view \"%s\" is left out: it does not differ from the opposite one.");
    }
    case kIfFitted:
        return hasFittings(context, scene.camera)
                   ? KorString()
                   : translated("The view \"%s\" is left out: nothing is fitted on this side.");
    case kOnRequest:
        return translated("The view \"%s\" is left out: it is drawn only on request.");
    default:
        return {};
    }
}

} // namespace

std::optional<ViewScene> ViewScenes::of(DrawingContext& context, const StructDetViewRequest& view,
                                        bool askedFor) {
    ViewScene scene;
    scene.request = &view;
    scene.chain = chainOf(context, view);
    scene.looks = looksOf(context, view, scene.chain);
    const std::vector<int> seen = bodies(context, scene.looks);
    scene.camera = ViewCameras::of(context.rows, view, context.part, seen);
    scene.seen = context.seen.of(context.part, seen, scene.camera);
    if (const KorString why = askedFor ? KorString() : whyLeftOut(context, scene); !why.isEmpty()) {
        context.rows.note(KorString::format(why, {view.name}));
        return std::nullopt;
    }
    const auto* status = context.rows.row<StructDetailVisibilityStatus>(view.visibilityStatusKey);
    scene.showsAnything = !status || status->status != 0;
    scene.showsHidden = !status || status->status == 2;
    scene.clipping = clippingOf(context, view);
    scene.clipping.linetype = context.pens.linetype(scene.clipping.linetypeKey);
    std::vector<std::pair<double, double>> cuts[2];
    for (const int direction : {0, 1})
        if (scene.clipping.along[direction])
            cuts[direction] = LengthClipping::stretches(scene.seen, direction, scene.clipping);
    for (const int direction : {0, 1})
        if (cuts[1 - direction].empty())
            for (const auto& stretch : cuts[direction])
                if (const auto also = LengthClipping::alongOblique(scene.seen, direction, stretch))
                    cuts[1 - direction].push_back(*also);
    for (auto& along : cuts)
        std::ranges::sort(along);
    const double scale = scaleOf(context, scene, cuts);
    for (const int direction : {0, 1})
        scene.maps[direction] = AxisMap(scale, cuts[direction], scene.clipping.gap);
    scene.outline = boxOf(scene.seen, scene.maps);
    return scene;
}
