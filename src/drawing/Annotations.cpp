#include "drawing/Annotations.h"

#include "drawing/Figures.h"
#include "drawing/LabelPlacing.h"
#include "drawing/LabelText.h"
#include "drawing/Titles.h"

namespace {

enum eKind { kText, kPartMark, kWeldSymbol, kBoltMark, kLevelMark, kHoleMark };
enum eFrame { kNoFrame, kBoxFrame, kCircleFrame };
enum eSide { kNearest, kLeft, kRight, kAbove, kBelow };

// A label before it has its place.
struct Label {
    const StructDetObjAnnotationStrategy* strategy = nullptr;
    const StructDetAnnotationType* type = nullptr;
    const StructDetArrangerControl* control = nullptr;
    const StructDetArrangerStrategy* order = nullptr;
    const StructDetLeaderStyle* leader = nullptr;
    ProvenancePtr provenance;
    Primitives texts; ///< about 0, 0
    Vec2 size;        ///< with frame and symbol
    Vec2 anchor;
    int object = -1;
};

// Where a leader ends: the middle of the longest line that is seen of the object, or its first hole.
std::optional<Vec2> anchorOf(const DrawingContext& context, const ViewScene& scene, int index) {
    const PartObject& object = context.object(index);
    double longest = 0;
    std::optional<Vec2> anchor;
    for (const ViewLine& line : scene.seen.lines) {
        const Vec2 a = scene.onSheet(line.a);
        const Vec2 b = scene.onSheet(line.b);
        if (line.object == index && line.visible && (b - a).length() > longest) {
            longest = (b - a).length();
            anchor = (a + b) * 0.5;
        }
    }
    const bool isLine = object.type == eObjectType::kCut || object.type == eObjectType::kLevel;
    if (isLine && !object.box.isEmpty())
        anchor = scene.onSheet(object.start);
    if (anchor && object.type == eObjectType::kLevel)
        anchor->u = scene.outline.low.u;
    if (anchor && !object.centres.empty() && object.type != eObjectType::kCut)
        anchor = scene.onSheet(object.centres.front());
    return anchor;
}

class Labelling {
public:
    Labelling(DrawingContext& context, const ViewScene& scene, const Primitives& drawn)
        : m_context(context), m_scene(scene), m_box(boxOf(drawn)), m_placing(drawn) {}

    void collect() {
        std::set<std::pair<std::int32_t, std::string>> named;
        for (const auto& [index, look] : m_scene.looks) {
            const auto* strategy =
                look.drawn && look.entry
                    ? m_context.rows.row<StructDetObjAnnotationStrategy>(look.entry->annotationStrategyKey)
                    : nullptr;
            const PartObject& object = m_context.object(index);
            const std::optional<Vec2> anchor = strategy ? anchorOf(m_context, m_scene, index) : std::nullopt;
            if (!anchor || (!m_context.isOverview && !named.insert({look.entry->key, object.name}).second) ||
                (strategy->repeatPerView == 0 && m_context.labelled.contains({strategy->key, index})))
                continue;
            m_context.labelled.insert({strategy->key, index});
            add(*strategy, look, index, *anchor);
        }
        std::ranges::stable_sort(m_labels, std::greater(),
                                 [](const Label& label) { return label.order ? label.order->priority : 0; });
    }

    void place() {
        for (Label& label : m_labels)
            if (!label.control || label.control->newArranger == 0)
                draw(label, m_placing.place(wanted(label)));
        lineUp();
    }

    Primitives figures;

private:
    void add(const StructDetObjAnnotationStrategy& strategy, const ObjectLook& look, int index, Vec2 anchor) {
        StyleRows& rows = m_context.rows;
        Label label;
        label.strategy = &strategy;
        label.type = rows.row<StructDetAnnotationType>(strategy.annotationTypeKey);
        label.control = rows.row<StructDetArrangerControl>(strategy.arrangerControlKey);
        label.order = rows.row<StructDetArrangerStrategy>(strategy.arrangerStrategyKey);
        label.leader = label.type ? rows.row<StructDetLeaderStyle>(label.type->leaderStyleKey) : nullptr;
        label.anchor = anchor;
        label.object = index;
        label.provenance = provenanceOf(label, look);
        const PartObject& object = m_context.object(index);
        const auto values = [&](const std::string& name) -> std::optional<std::string> {
            if (name == "scale")
                return LabelText::scale(m_scene.scale());
            if (name == "view")
                return m_scene.request->name.toStdString();
            return labelValue(m_context.part, &object, name);
        };
        const LabelStyle style{m_context.pens.settings().textFont,
                               label.type && label.type->textSize > 0 ? label.type->textSize : 3.5, 7};
        label.texts = LabelText::lay(strategy.contents, style, values, m_context.pens.thin(),
                                     Primitive::kLabel, label.provenance);
        const Box2 box = boxOf(label.texts);
        if (box.isEmpty())
            return;
        for (Primitive& text : label.texts) {
            text.move(box.middle() * -1);
            text.object = index;
        }
        label.size = {box.width(), box.height()};
        if (label.type && label.type->frame == kBoxFrame)
            label.size = label.size + Vec2{3, 3};
        if (label.type && label.type->frame == kCircleFrame)
            label.size = Vec2{1, 1} * (std::hypot(box.width(), box.height()) + 1.5);
        m_labels.push_back(std::move(label));
    }

    ProvenancePtr provenanceOf(const Label& label, const ObjectLook& look) const {
        const StyleRows& rows = m_context.rows;
        ProvenancePtr chain = nearer(rows.step(*look.entry, {"annotation_strategy"}), look.provenance);
        if (label.order)
            chain =
                nearer(rows.step(*label.order, {"direction", "spacing", "align_to_view", "priority"}), chain);
        if (label.control)
            chain = nearer(rows.step(*label.control, {"new_arranger", "distance", "max_leader_length",
                                                      "side_preference", "allow_overlap"}),
                           chain);
        if (label.leader)
            chain = nearer(rows.step(*label.leader, {"arrow", "arrow_size", "landing"}), chain);
        if (label.type)
            chain = nearer(rows.step(*label.type, {"annotation_kind", "leader_style", "text_size", "frame"}),
                           chain);
        return nearer(rows.step(*label.strategy, {"annotation_type", "arranger_control", "arranger_strategy",
                                                  "contents", "repeat_per_view"}),
                      chain);
    }

    static WantedLabel wanted(const Label& label) {
        WantedLabel wanted{label.anchor, label.size};
        if (label.control) {
            wanted.distance = std::clamp(label.control->distance, 0.0, 1000.0);
            wanted.farthest = std::clamp(label.control->maxLeaderLength, wanted.distance, 1000.0);
            wanted.side = label.control->sidePreference;
            wanted.mayCover = label.control->allowOverlap != 0;
        }
        if (wanted.farthest == 0) // on the object itself
            wanted.distance = -std::min(label.size.u, label.size.v) / 2;
        return wanted;
    }

    // Labels of the second arranger: in rows above or below, or in columns at the sides.
    void lineUp() {
        std::map<int, std::vector<Label*>> sides;
        for (Label& label : m_labels)
            if (label.control && label.control->newArranger != 0)
                sides[sideOf(label)].push_back(&label);
        for (auto& [side, labels] : sides) {
            const bool isRow = side == kAbove || side == kBelow;
            std::ranges::stable_sort(labels, {},
                                     [&](const Label* l) { return isRow ? l->anchor.u : -l->anchor.v; });
            double next = -1e300;
            for (Label* label : labels) {
                const double length = isRow ? label->size.u : label->size.v;
                const double wantedAt = (isRow ? label->anchor.u : -label->anchor.v) - length / 2;
                const double at = std::max(next, wantedAt);
                next = at + length + std::clamp(label->order ? label->order->spacing : 5.0, 0.0, 1000.0);
                const Vec2 middle = besides(*label, side, at + length / 2);
                m_placing.take(middle, label->size);
                draw(*label, middle);
            }
        }
    }

    static int sideOf(const Label& label) {
        const int wanted = label.control->sidePreference;
        const int direction = label.order ? label.order->direction : 0;
        if (direction == 1)
            return wanted == kBelow ? kBelow : kAbove;
        if (direction == 2)
            return wanted == kLeft ? kLeft : kRight;
        return wanted == kNearest ? kAbove : wanted;
    }

    // Beside the view, or beside the part where the labels follow that.
    Vec2 besides(const Label& label, int side, double along) const {
        const Box2& box = label.order && label.order->alignToView != 0 ? m_box : m_scene.outline;
        const double distance = std::clamp(label.control->distance, 0.0, 1000.0);
        switch (side) {
        case kLeft:
            return {box.low.u - distance - label.size.u / 2, -along};
        case kRight:
            return {box.high.u + distance + label.size.u / 2, -along};
        case kBelow:
            return {along, box.low.v - distance - label.size.v / 2};
        default:
            return {along, box.high.v + distance + label.size.v / 2};
        }
    }

    Primitive& add(Primitive primitive) {
        figures.push_back(std::move(primitive));
        return figures.back();
    }
    void line(const Label& label, std::vector<Vec2> points) {
        add(Figures::line(std::move(points), m_context.pens.thin(), Primitive::kLabel, label.provenance,
                          label.object));
    }

    void draw(Label& label, Vec2 middle) {
        drawLeader(label, middle);
        moveAll(label.texts, middle);
        figures.insert(figures.end(), label.texts.begin(), label.texts.end());
        const Vec2 low = middle - label.size * 0.5;
        const Vec2 high = middle + label.size * 0.5;
        const int frame = label.type ? label.type->frame : static_cast<int>(kNoFrame);
        if (frame == kBoxFrame)
            line(label, {low, {high.u, low.v}, high, {low.u, high.v}, low});
        if (frame == kCircleFrame)
            add(Figures::circle(middle, label.size.u / 2, m_context.pens.thin(), Primitive::kLabel,
                                label.provenance, label.object));
        const int kind = label.type ? label.type->annotationKind : static_cast<int>(kText);
        if (kind == kWeldSymbol) // a fillet weld on its reference line
            line(label, {{low.u - 4, low.v - 0.8},
                         {high.u, low.v - 0.8},
                         {low.u - 1, low.v - 0.8},
                         {low.u - 4, low.v + 2.2},
                         {low.u - 4, low.v - 0.8}});
        if (kind == kLevelMark)
            line(label, {{low.u, low.v - 0.8}, {high.u, low.v - 0.8}});
        if (kind == kHoleMark || kind == kBoltMark)
            line(label, {{low.u, low.v - 0.6}, {high.u, low.v - 0.6}});
        if (kind == kPartMark && frame == kNoFrame && label.leader)
            line(label, {{low.u, low.v - 0.6}, {high.u, low.v - 0.6}});
    }

    void drawLeader(const Label& label, Vec2 middle) {
        const bool isLeft = label.anchor.u > middle.u;
        const bool hasFrame = label.type && label.type->frame != kNoFrame;
        const Vec2 edge = {middle.u + (isLeft ? 0.5 : -0.5) * label.size.u,
                           hasFrame ? middle.v : middle.v - label.size.v / 2 - 0.6};
        const double landing = label.leader ? std::clamp(label.leader->landing, 0.0, 100.0) : 0;
        const Vec2 knee = edge + Vec2{isLeft ? landing : -landing, 0};
        const Vec2 d = label.anchor - knee;
        if (!label.leader ||
            (label.anchor - middle).length() < std::hypot(label.size.u, label.size.v) / 2 + 1 ||
            d.length() < 1)
            return;
        line(label, {edge, knee, label.anchor});
        const double size = std::clamp(label.leader->arrowSize, 0.0, 50.0);
        const Vec2 back = d * (-size / d.length());
        const Vec2 side = Vec2{-back.v, back.u} * 0.2;
        if (label.leader->arrow == 1) {
            line(label, {label.anchor, label.anchor + back + side, label.anchor + back - side});
            figures.back().kind = Primitive::kFill;
        } else if (label.leader->arrow == 2) {
            line(label, {label.anchor + back + side, label.anchor, label.anchor + back - side});
        } else if (label.leader->arrow == 3) {
            const Loop2 dot = Outline::circle(label.anchor, size / 2).corners;
            line(label, dot);
            figures.back().kind = Primitive::kFill;
        }
    }

    DrawingContext& m_context;
    const ViewScene& m_scene;
    Box2 m_box;
    LabelPlacing m_placing;
    std::vector<Label> m_labels;
};

} // namespace

Primitives annotationsOf(DrawingContext& context, const ViewScene& scene, const Primitives& drawn) {
    if (!scene.showsAnything || scene.outline.isEmpty())
        return {};
    Labelling labelling(context, scene, drawn);
    labelling.collect();
    labelling.place();
    return std::move(labelling.figures);
}
