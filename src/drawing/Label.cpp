#include "drawing/Label.h"

#include "drawing/LabelText.h"
#include "drawing/Titles.h"
#include "records/AnnotationLook.h"

namespace {

constexpr double kSymbol = 4.5; // mm beside the text of a weld

ProvenancePtr provenanceOf(const StyleRows& rows, const Label& label, const ObjectLook& look) {
    ProvenancePtr chain = nearer(rows.step(*look.entry, {"annotation_strategy"}), look.provenance);
    if (label.order)
        chain = nearer(rows.step(*label.order, {"direction", "spacing", "align_to_view", "priority"}), chain);
    if (label.control)
        chain = nearer(rows.step(*label.control, {"new_arranger", "distance", "max_leader_length",
                                                  "side_preference", "allow_overlap"}),
                       chain);
    if (label.leader)
        chain = nearer(rows.step(*label.leader, {"arrow", "arrow_size", "landing"}), chain);
    if (label.type)
        chain =
            nearer(rows.step(*label.type, {"annotation_kind", "leader_style", "text_size", "frame"}), chain);
    return nearer(rows.step(*label.strategy, {"annotation_type", "arranger_control", "arranger_strategy",
                                              "contents", "repeat_per_view"}),
                  chain);
}

// With frame and symbol.
Vec2 sizeOf(const Label& label, const Box2& texts) {
    Vec2 size = {texts.width(), texts.height()};
    if (label.frame() == kBoxFrame)
        size = size + Vec2{3, 3};
    if (label.frame() == kCircleFrame)
        size = Vec2{1, 1} * (std::hypot(size.u, size.v) + 1.5);
    if (label.kind() == kWeldSymbol)
        size.u += kSymbol;
    return size;
}

// The texts of a label, in the font of the drawing, with its variables filled in.
Primitives textsOf(DrawingContext& context, const ViewScene& scene, const Label& label) {
    const auto values = [&](const std::string& name) -> std::optional<std::string> {
        if (name == "scale")
            return LabelText::scale(scene.scale(), context.rows);
        if (name == "view")
            return scene.request->name.toStdString();
        return labelValue(context, &context.object(label.object), name);
    };
    LabelStyle style = labelStyleOf(label.type);
    style.font = context.pens.settings().textFont;
    return LabelText::lay(label.strategy->contents, style, values, context.pens.thin(), Primitive::kLabel,
                          label.provenance);
}

// Nothing where its contents are empty.
std::optional<Label> labelOf(DrawingContext& context, const ViewScene& scene,
                             const StructDetObjAnnotationStrategy& strategy, const ObjectLook& look,
                             int index, const std::vector<Vec2>& anchors) {
    StyleRows& rows = context.rows;
    Label label;
    label.strategy = &strategy;
    label.type = rows.row<StructDetAnnotationType>(strategy.annotationTypeKey);
    label.control = rows.row<StructDetArrangerControl>(strategy.arrangerControlKey);
    label.order = rows.row<StructDetArrangerStrategy>(strategy.arrangerStrategyKey);
    label.leader = label.type ? rows.row<StructDetLeaderStyle>(label.type->leaderStyleKey) : nullptr;
    label.anchors = anchors;
    label.anchor = anchors.front();
    label.object = index;
    label.provenance = provenanceOf(rows, label, look);
    const PartObject& object = context.object(index);
    if (object.isRound() && scene.looksAlong(object.axis))
        label.rim = object.diameter / 2 * scene.scale();
    label.texts = textsOf(context, scene, label);
    const Box2 box = boxOf(label.texts);
    if (box.isEmpty())
        return std::nullopt;
    for (Primitive& text : label.texts) {
        text.move(box.middle() * -1);
        text.object = index;
    }
    label.size = sizeOf(label, box);
    if (label.kind() == kWeldSymbol)
        moveAll(label.texts, {kSymbol / 2, 0});
    return label;
}

} // namespace

LeaderShape Label::leaderShape() const {
    LeaderShape shape;
    shape.from = frame() == kCircleFrame ? LeaderShape::kRing
                 : frame() == kBoxFrame  ? LeaderShape::kFrame
                 : kind() == kWeldSymbol ? LeaderShape::kSymbol
                                         : LeaderShape::kLine;
    shape.landing = std::clamp(leader->landing, 0.0, 100.0);
    shape.rim = rim;
    return shape;
}

std::vector<Label> labelsOf(DrawingContext& context, const ViewScene& scene, const LabelAnchors& points) {
    std::vector<Label> labels;
    std::set<std::pair<std::int32_t, std::string>> named;
    for (const auto& [index, look] : scene.looks) {
        const auto* strategy =
            look.drawn && look.entry
                ? context.rows.row<StructDetObjAnnotationStrategy>(look.entry->annotationStrategyKey)
                : nullptr;
        if (!strategy)
            continue;
        const std::vector<Vec2> anchors = points.of(index);
        if (anchors.empty() ||
            (!context.isOverview && !named.insert({look.entry->key, context.object(index).name}).second) ||
            (strategy->repeatPerView == 0 && context.labelled.contains({strategy->key, index})))
            continue;
        context.labelled.insert({strategy->key, index});
        if (std::optional<Label> label = labelOf(context, scene, *strategy, look, index, anchors))
            labels.push_back(std::move(*label));
    }
    std::ranges::stable_sort(labels, std::greater(),
                             [](const Label& label) { return label.order ? label.order->priority : 0; });
    return labels;
}
