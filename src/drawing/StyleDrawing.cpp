#include "drawing/StyleDrawing.h"

#include "base/Translation.h"
#include "drawing/Annotations.h"
#include "drawing/Arrangement.h"
#include "drawing/BrokenEdges.h"
#include "drawing/CutMarks.h"
#include "drawing/Dimensions.h"
#include "drawing/Titles.h"
#include "drawing/ViewFigures.h"
#include "drawing/ViewPlace.h"

namespace {

void append(Primitives& all, Primitives more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// The primitives of a view about its reference.
ViewPicture pictureOf(DrawingContext& context, const ViewScene& scene) {
    ViewPicture picture;
    picture.key = scene.request->key;
    picture.name = scene.request->name.toStdString();
    picture.scale = scene.scale();
    picture.isCut = scene.request->usedForCutsAndCallouts != 0;
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
    ViewPlace place{scene.camera, {scene.maps[0], scene.maps[1]}, {}};
    if (!scene.outline.isEmpty())
        place.outline = {scene.outline.low - zero, scene.outline.high - zero};
    picture.place = std::make_shared<const ViewPlace>(std::move(place));
    picture.box = boxOf(picture.primitives);
    return picture;
}

class Composer {
public:
    Composer(DrawingContext& context, Drawing& drawing) : m_context(context), m_drawing(drawing) {}

    void addView(std::int32_t key, bool askedFor) {
        const auto* request = m_context.rows.row<StructDetViewRequest>(key);
        std::optional<ViewScene> scene;
        if (request)
            scene = ViewScenes::of(m_context, *request, askedFor);
        if (!scene)
            return;
        ViewPicture picture = pictureOf(m_context, *scene);
        if (picture.primitives.empty()) {
            m_context.rows.note(KorString::format(translated("The view \"%s\" shows nothing of this part."),
                                                  {request->name}));
            return;
        }
        const auto* direction =
            m_context.rows.row<StructDetViewArrangeDirection>(request->arrangeDirectionKey);
        ArrangedView place;
        place.direction = direction ? direction->direction : -1;
        place.right = scene->camera.frame.x;
        place.up = scene->camera.frame.z;
        place.isSection = picture.isCut;
        m_places.push_back(place);
        m_drawing.views.push_back(std::move(picture));
    }

    void finish() {
        static const StructDetViewArrangeStrategy kPlain;
        const auto* wanted =
            m_context.rows.row<StructDetViewArrangeStrategy>(m_context.style.arrangeStrategyKey);
        const StructDetViewArrangeStrategy& strategy = wanted ? *wanted : kPlain;
        if (m_places.empty())
            return;
        const auto found = std::ranges::find(m_places, 0, &ArrangedView::direction);
        const std::size_t first =
            found == m_places.end() ? 0 : static_cast<std::size_t>(found - m_places.begin());
        ViewPicture& main = m_drawing.views[first];
        addCutViewTitles(m_context, m_drawing.views);
        addCutMarks(m_context, m_drawing.views, first);
        addTitleAboveMainView(m_context, main);
        for (std::size_t i = 0; i < m_places.size(); ++i)
            m_places[i].box = m_drawing.views[i].box;
        arrangeViews(m_places, strategy);
        Box2 all;
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            moveAll(m_drawing.views[i].primitives, m_places[i].moved);
            m_drawing.views[i].box = boxOf(m_drawing.views[i].primitives);
            all.add(m_drawing.views[i].box);
        }
        m_drawing.sheet = titleAbout(m_context, main, all);
        addFrame(strategy);
    }

private:
    void addFrame(const StructDetViewArrangeStrategy& strategy) {
        const Box2 box = m_drawing.box();
        const Vec2 margin = {strategy.frameMargin, strategy.frameMargin};
        const Vec2 low = box.low - margin;
        const Vec2 high = box.high + margin;
        Primitive frame;
        frame.purpose = Primitive::kFrame;
        frame.points = {low, {high.u, low.v}, high, {low.u, high.v}, low};
        frame.pen = m_context.pens.thin();
        frame.provenance = strategy.key > 0
                               ? nearer(m_context.rows.step(strategy, {"frame_margin"}), m_context.chain)
                               : m_context.chain;
        m_drawing.sheet.push_back(std::move(frame));
    }

    DrawingContext& m_context;
    Drawing& m_drawing;
    std::vector<ArrangedView> m_places;
};

} // namespace

Drawing drawStyle(StyleSource& source, const SamplePart& part, const DrawingRequest& request) {
    static const StructDetHcadSettings kPlain;
    Drawing drawing;
    StyleRows rows(source);
    const auto* style = rows.row<StructDetailStyle>(request.style);
    if (style && part.main()) {
        drawing.style = style->name.toStdString();
        drawing.part = part.name;
        const auto* settings = rows.row<StructDetHcadSettings>(style->hcadSettingsKey);
        Pens pens(rows, settings ? *settings : kPlain, request.support);
        DrawingContext context{rows, pens, *style, part, {}, {}};
        context.chain = std::make_shared<const Provenance>(Provenance{
            rows.step(*style, {"arrange_strategy", "object_selection_strategy", "automatic_clipping",
                               "grid_reference_settings", "drawing_settings"})});
        context.entriesOff = request.entriesOff;
        selectObjects(context);
        Composer composer(context, drawing);
        for (int i = 0; i < style->getLengthItems(); ++i)
            if (const std::int32_t key = style->getViewRequestAt(i);
                key > 0 && (request.view == 0 || request.view == key))
                composer.addView(key, request.view == key);
        composer.finish();
    }
    drawing.notes = rows.notes();
    return drawing;
}
