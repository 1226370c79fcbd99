#include "drawing/DrawnView.h"

#include "base/Translation.h"
#include "drawing/Annotations.h"
#include "drawing/BrokenEdges.h"
#include "drawing/Dimensions.h"
#include "drawing/ViewFigures.h"
#include "drawing/ViewPlace.h"

namespace {

void append(Primitives& all, Primitives more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// Leaves out what damaged records put beyond any sheet, or what is more than anybody can see.
void keepWhatCanBeSeen(DrawingContext& context, const ViewScene& scene, Primitives& primitives) {
    constexpr std::size_t kMost = 60'000;
    const std::size_t all = primitives.size();
    std::erase_if(primitives, [](const Primitive& each) { return !each.isOnSheet(); });
    if (primitives.size() > kMost)
        primitives.resize(kMost);
    if (primitives.size() < all)
        context.rows.note(KorString::format(
            translated(
                "Some of what the view \"%s\" shows lies beyond any sheet, or is too much, and is left out."),
            {scene.request->name}));
}

// The primitives of a view about its reference.
void addPrimitives(DrawingContext& context, const ViewScene& scene, ViewPicture& picture) {
    append(picture.primitives, hatchesOf(context, scene));
    append(picture.primitives, edgesOf(context, scene));
    append(picture.primitives, centreLinesOf(context, scene));
    append(picture.primitives, breaksOf(context, scene));
    append(picture.primitives, brokenEdgesOf(context, scene));
    append(picture.primitives, gridOf(context, scene));
    append(picture.primitives, dimensionsOf(context, scene));
    append(picture.primitives, annotationsOf(context, scene, picture.primitives));
    append(picture.primitives, compassOf(context, scene, boxOf(picture.primitives)));
    const Vec2 zero = scene.onSheet(scene.camera.reference);
    moveAll(picture.primitives, zero * -1);
    keepWhatCanBeSeen(context, scene, picture.primitives);
    ViewPlace place{scene.camera, {scene.maps[0], scene.maps[1]}, {}};
    if (!scene.outline.isEmpty())
        place.outline = {scene.outline.low - zero, scene.outline.high - zero};
    picture.place = std::make_shared<const ViewPlace>(std::move(place));
    picture.box = boxOf(picture.primitives);
}

void drawInto(DrawnView& view, DrawingContext& context, const StructDetViewRequest& request, bool askedFor) {
    const std::optional<ViewScene> scene = ViewScenes::of(context, request, askedFor);
    if (!scene)
        return;
    view.picture.name = request.name.toStdString();
    view.picture.scale = scene->scale();
    view.picture.isCut = request.usedForCutsAndCallouts != 0;
    addPrimitives(context, *scene, view.picture);
    if (view.picture.primitives.empty())
        context.rows.note(
            KorString::format(translated("The view \"%s\" shows nothing of this part."), {request.name}));
    const auto* direction = context.rows.row<StructDetViewArrangeDirection>(request.arrangeDirectionKey);
    view.place.direction = direction ? direction->direction : -1;
    view.place.right = scene->camera.frame.x;
    view.place.up = scene->camera.frame.z;
    view.place.isSection = view.picture.isCut;
    std::ranges::copy_if(view.picture.primitives, std::back_inserter(view.written),
                         [](const Primitive& each) {
                             return each.kind == Primitive::kText || each.purpose == Primitive::kDimension;
                         });
}

} // namespace

DrawnView DrawnView::draw(DrawingContext& context, std::int32_t key, bool askedFor) {
    const StyleRows::Work work(context.rows);
    DrawnView view;
    view.picture.key = key;
    view.labelledBefore = context.labelled;
    if (const auto* request = context.rows.row<StructDetViewRequest>(key))
        drawInto(view, context, *request, askedFor);
    view.labelledAfter = context.labelled;
    view.reads = work.reads();
    view.notes = work.notes();
    return view;
}
