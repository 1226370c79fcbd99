#include "drawing/Annotations.h"

#include "base/Translation.h"
#include "drawing/Figures.h"
#include "drawing/LabelAnchors.h"
#include "drawing/LabelPlacing.h"
#include "drawing/LabelText.h"
#include "drawing/Titles.h"
#include "records/AnnotationLook.h"

#include <numbers>

namespace {

enum eKind { kText, kPartMark, kWeldSymbol, kBoltMark, kLevelMark, kHoleMark };
enum eFrame { kNoFrame, kBoxFrame, kCircleFrame };
constexpr double kSymbol = 4.5; // mm beside the text of a weld

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
    std::vector<Vec2> anchors;
    Vec2 anchor;    ///< the one that is used
    double rim = 0; ///< around the anchor, where that is the centre of something round
    int object = -1;
    double turned = 0; ///< degrees
};

class Labelling {
public:
    Labelling(DrawingContext& context, const ViewScene& scene, const Primitives& drawn)
        : m_context(context), m_scene(scene), m_anchors(context, scene, drawn), m_box(boxOf(drawn)),
          m_placing(drawn) {}

    void collect() {
        std::set<std::pair<std::int32_t, std::string>> named;
        for (const auto& [index, look] : m_scene.looks) {
            const auto* strategy =
                look.drawn && look.entry
                    ? m_context.rows.row<StructDetObjAnnotationStrategy>(look.entry->annotationStrategyKey)
                    : nullptr;
            const PartObject& object = m_context.object(index);
            if (!strategy)
                continue;
            const std::vector<Vec2> anchors = m_anchors.of(index);
            if (anchors.empty() ||
                (!m_context.isOverview && !named.insert({look.entry->key, object.name}).second) ||
                (strategy->repeatPerView == 0 && m_context.labelled.contains({strategy->key, index})))
                continue;
            m_context.labelled.insert({strategy->key, index});
            add(*strategy, look, index, anchors);
        }
        std::ranges::stable_sort(m_labels, std::greater(),
                                 [](const Label& label) { return label.order ? label.order->priority : 0; });
    }

    void place() {
        lineUp(); // first, so that others keep clear of the leaders
        for (Label& label : m_labels)
            if (!isLinedUp(label))
                placeAlone(label);
        if (m_placing.gaveUp())
            m_context.rows.note(KorString::format(
                translated("The view \"%s\" has so many labels that some of them cover others."),
                {m_scene.request->name}));
    }

    Primitives figures;

private:
    void add(const StructDetObjAnnotationStrategy& strategy, const ObjectLook& look, int index,
             const std::vector<Vec2>& anchors) {
        StyleRows& rows = m_context.rows;
        Label label;
        label.strategy = &strategy;
        label.type = rows.row<StructDetAnnotationType>(strategy.annotationTypeKey);
        label.control = rows.row<StructDetArrangerControl>(strategy.arrangerControlKey);
        label.order = rows.row<StructDetArrangerStrategy>(strategy.arrangerStrategyKey);
        label.leader = label.type ? rows.row<StructDetLeaderStyle>(label.type->leaderStyleKey) : nullptr;
        label.anchors = anchors;
        label.anchor = anchors.front();
        label.object = index;
        label.provenance = provenanceOf(label, look);
        const PartObject& object = m_context.object(index);
        if (object.isRound() && m_scene.looksAlong(object.axis))
            label.rim = object.diameter / 2 * m_scene.scale();
        const auto values = [&](const std::string& name) -> std::optional<std::string> {
            if (name == "scale")
                return LabelText::scale(m_scene.scale(), m_context.rows);
            if (name == "view")
                return m_scene.request->name.toStdString();
            return labelValue(m_context, &object, name);
        };
        LabelStyle style = labelStyleOf(label.type);
        style.font = m_context.pens.settings().textFont;
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
        if (label.type && label.type->annotationKind == kWeldSymbol) {
            label.size.u += kSymbol;
            moveAll(label.texts, {kSymbol / 2, 0});
        }
        if (label.control && label.control->newArranger != 0)
            label.anchor = outermost(label);
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

    static bool isOnObject(const Label& label) {
        return label.control && label.control->newArranger == 0 && label.control->maxLeaderLength <= 0;
    }

    // Whether it has room within the outline.
    bool isUponPlate(const Label& label) const {
        const Box2 box = m_anchors.boxOf(label.object);
        return isOnObject(label) && m_context.object(label.object).type == eObjectType::kPlate &&
               box.width() > 2 * label.size.u && box.height() > 2 * label.size.v;
    }

    // How far a label in a row or column on that side would be from the anchor.
    double away(Vec2 p, int side) const {
        return side == kLeft    ? p.u - m_box.low.u
               : side == kRight ? m_box.high.u - p.u
               : side == kBelow ? p.v - m_box.low.v
                                : m_box.high.v - p.v;
    }

    // Whether the label goes to a row or column, which is not too far for its leader.
    bool isLinedUp(const Label& label) const {
        if (!label.control || label.control->newArranger == 0)
            return false;
        if (!label.leader)
            return true;
        const double distance = std::clamp(label.control->distance, 0.0, 1000.0);
        return away(label.anchor, sideOf(label)) + distance <=
               std::max(label.control->maxLeaderLength, distance);
    }

    void placeAlone(Label& label) {
        if (isOnObject(label) && alongObject(label))
            return;
        if (isUponPlate(label))
            label.leader = nullptr;
        const LabelPlacing::Place place = m_placing.place(wanted(label));
        label.anchor = place.anchor;
        draw(label, place.middle);
    }

    // Upon a long object, read along it. False where it is not long enough, or others stand there.
    bool alongObject(Label& label) {
        const std::optional<Vec2> d = m_anchors.directionOf(label.object);
        const Box2 box = m_anchors.boxOf(label.object);
        const bool isFramed = label.type && label.type->frame != kNoFrame;
        if (!d || isFramed || std::abs(d->u) * box.width() + std::abs(d->v) * box.height() < label.size.u)
            return false;
        const Vec2 up = {-d->v, d->u};
        const bool isLevel = std::abs(d->u) > 1 - 1e-9 || std::abs(d->v) > 1 - 1e-9;
        const double half = isLevel ? (std::abs(up.u) * box.width() + std::abs(up.v) * box.height()) / 2 : 2;
        const double beside = half + label.size.v / 2 + 0.8;
        const Vec2 whole = {std::abs(d->u) * label.size.u + std::abs(d->v) * label.size.v,
                            std::abs(d->v) * label.size.u + std::abs(d->u) * label.size.v};
        const double length = std::abs(d->u) * box.width() + std::abs(d->v) * box.height();
        for (const bool isClear : {true, false})
            for (const double part : {0.0, -0.1, 0.1, -0.2, 0.2, -0.33, 0.33})
                for (const double side : {beside, -beside}) {
                    const Vec2 tried = box.middle() + *d * (part * length) + up * side;
                    Box2 taken;
                    taken.add(tried - whole * 0.5);
                    taken.add(tried + whole * 0.5);
                    if (!m_placing.coversLabel(taken) && !(isClear && m_placing.coversLine(taken, 0.5)))
                        return drawAlong(label, tried, *d, whole);
                }
        return false;
    }
    bool drawAlong(Label& label, Vec2 middle, Vec2 d, Vec2 whole) {
        m_placing.take(middle, whole);
        for (Primitive& text : label.texts) {
            const Vec2 p = text.points[0];
            text.points[0] = middle + Vec2{p.u * d.u - p.v * d.v, p.u * d.v + p.v * d.u};
            text.turned = std::atan2(d.v, d.u) * 180 / std::numbers::pi;
            figures.push_back(text);
        }
        return true;
    }

    WantedLabel wanted(const Label& label) const {
        WantedLabel wanted{label.anchors, label.size};
        wanted.hasLeader = label.leader != nullptr;
        if (label.control) {
            wanted.distance = std::clamp(label.control->distance, 0.0, 1000.0);
            wanted.farthest = std::clamp(label.control->maxLeaderLength, wanted.distance, 1000.0);
            wanted.side = label.control->sidePreference;
            wanted.mayCover = label.control->allowOverlap != 0;
        }
        wanted.distance += label.rim;
        wanted.farthest += label.rim;
        if (isOnObject(label)) {
            const Box2 box = m_anchors.boxOf(label.object);
            const bool isSmall = !box.isEmpty() && box.width() < label.size.u;
            const bool isWide = isUponPlate(label);
            if (isSmall || isWide) {
                wanted.anchors = {box.middle()};
                wanted.mayCover = false;
            }
            if (isWide)
                for (const Vec2 part : {Vec2{-1, -1}, Vec2{1, -1}, Vec2{-1, 1}, Vec2{1, 1}})
                    wanted.anchors.push_back(box.middle() +
                                             Vec2{part.u * box.width(), part.v * box.height()} * 0.25);
            wanted.distance =
                isSmall ? (box.width() + box.height()) / 4 : -std::min(label.size.u, label.size.v) / 2;
            wanted.farthest = wanted.distance + label.size.v * 3; // where another one has its place already
        }
        if (label.control && label.control->newArranger != 0) // too far from its row
            wanted.distance = std::min(wanted.distance, 8.0);
        return wanted;
    }

    // Labels of the second arranger: in rows above or below, or in columns at the sides.
    void lineUp() {
        std::map<int, std::vector<Label*>> sides;
        for (Label& label : m_labels)
            if (isLinedUp(label))
                sides[sideOf(label)].push_back(&label);
        for (auto& [side, labels] : sides) {
            const bool isRow = side == kAbove || side == kBelow;
            std::ranges::stable_sort(labels, {},
                                     [&](const Label* l) { return isRow ? l->anchor.u : -l->anchor.v; });
            double next = -1e300;
            for (Label* label : labels) {
                const double length = isRow ? label->size.u : label->size.v;
                const double wantedAt = (isRow ? label->anchor.u : -label->anchor.v) - length / 2;
                double at = std::max(next, wantedAt);
                constexpr double kStep = 2;
                for (int tries = 0; tries < 60 && m_placing.coversLabel(boxOn(*label, side, at)); ++tries)
                    at += kStep;
                next = at + length + std::clamp(label->order ? label->order->spacing : 5.0, 0.0, 1000.0);
                const Vec2 middle = besides(*label, side, at + length / 2);
                label->anchor = m_placing.bestAnchor(middle, label->size, label->anchors);
                m_placing.take(middle, label->size);
                if (label->leader)
                    m_placing.takeLeader(middle, label->anchor);
                draw(*label, middle);
            }
        }
    }
    // The box of a label whose beginning stands there along its row or column.
    Box2 boxOn(const Label& label, int side, double at) const {
        const bool isRow = side == kAbove || side == kBelow;
        const Vec2 middle = besides(label, side, at + (isRow ? label.size.u : label.size.v) / 2);
        Box2 box;
        box.add(middle - label.size * 0.5);
        box.add(middle + label.size * 0.5);
        return box;
    }

    // Where nothing is wanted, the side that is nearest to what the label points to.
    int sideOf(const Label& label) const {
        const int wanted = label.control->sidePreference;
        const int direction = label.order ? label.order->direction : 0;
        const bool isRow = wanted == kAbove || wanted == kBelow;
        if (wanted != kNearest && (direction == 0 || isRow == (direction == 1)))
            return wanted;
        std::vector<int> sides = {kAbove, kBelow, kLeft, kRight};
        if (direction == 1)
            sides = {kAbove, kBelow};
        else if (direction == 2)
            sides = {kLeft, kRight};
        return *std::ranges::min_element(sides, {}, [&](int side) { return away(label.anchor, side); });
    }

    // Of several places on an object the one from which the way out is shortest.
    Vec2 outermost(const Label& label) const {
        Label tried = label;
        return *std::ranges::min_element(label.anchors, {}, [&](Vec2 anchor) {
            tried.anchor = anchor;
            return away(anchor, sideOf(tried));
        });
    }

    // Beside the view, or beside the part where the labels follow that.
    Vec2 besides(const Label& label, int side, double along) const {
        const Box2& box = label.order && label.order->alignToView != 0 ? m_box : m_scene.outline;
        const double distance = std::clamp(label.control->distance, 0.0, 1000.0);
        const bool isUponLine = label.type && label.type->annotationKind == kLevelMark;
        const double up = isUponLine ? label.size.v / 2 + 0.6 : 0;
        switch (side) {
        case kLeft:
            return {box.low.u - distance - label.size.u / 2, up - along};
        case kRight:
            return {box.high.u + distance + label.size.u / 2, up - along};
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
            line(label, {{low.u, low.v - 0.6},
                         {high.u, low.v - 0.6},
                         {low.u + 3, low.v - 0.6},
                         {low.u, low.v + 2.4},
                         {low.u, low.v - 0.6}});
        if (kind == kWeldSymbol && m_context.object(label.object).role == eObjectRole::kSite) {
            const Vec2 foot = {label.anchor.u > middle.u ? high.u : low.u, low.v - 0.6};
            line(label, {foot, foot + Vec2{0, 6}});
            line(label, {foot + Vec2{0, 6}, foot + Vec2{-3, 5}, foot + Vec2{0, 4}});
            figures.back().kind = Primitive::kFill;
        }
        const bool isOnLine = kind == kLevelMark || kind == kHoleMark || kind == kBoltMark ||
                              (kind == kPartMark && frame == kNoFrame && label.leader);
        if (isOnLine)
            line(label, {{low.u, low.v - 0.6}, {high.u, low.v - 0.6}});
    }

    // From the end of the label that is nearer, with a landing as far as there is room, or from its corner
    // where it stands above or below its anchor; from a ring straight. Welds have their reference line.
    void drawLeader(const Label& label, Vec2 middle) {
        const Vec2 half = label.size * 0.5;
        const Vec2 away = label.anchor - middle;
        const int frame = label.type ? label.type->frame : static_cast<int>(kNoFrame);
        const bool isUpon = std::abs(away.u) < half.u + 0.5 && std::abs(away.v) < half.v + 1;
        if (!label.leader || isUpon)
            return;
        const double outward = away.u > 0 ? 1 : -1;
        const double landing = std::clamp(label.leader->landing, 0.0, 100.0);
        const double room = std::clamp(std::abs(away.u) - half.u, 0.0, landing);
        const bool isWeld = label.type && label.type->annotationKind == kWeldSymbol;
        const bool isInLine = !isWeld && std::abs(away.u) <= half.u;
        const double below = frame == kNoFrame ? half.v + 0.6 : half.v;
        Vec2 edge = middle + Vec2{outward * half.u, frame == kNoFrame ? -below : 0};
        if (frame == kCircleFrame)
            edge = middle + away * (half.u / away.length());
        else if (isInLine)
            edge = middle + Vec2{outward * half.u, away.v > 0 ? below : -below};
        const Vec2 knee = frame == kCircleFrame ? edge : edge + Vec2{outward * room, 0};
        const Vec2 way = label.anchor - knee;
        const Vec2 end =
            label.anchor - way * (std::min(label.rim, way.length()) / std::max(way.length(), 1e-9));
        const Vec2 d = end - knee;
        if (d.length() < 1)
            return;
        line(label, {edge, knee, end});
        const double size = std::clamp(label.leader->arrowSize, 0.0, 50.0);
        const Vec2 back = d * (-size / d.length());
        const Vec2 side = Vec2{-back.v, back.u} * 0.2;
        if (label.leader->arrow == 1) {
            line(label, {end, end + back + side, end + back - side});
            figures.back().kind = Primitive::kFill;
        } else if (label.leader->arrow == 2) {
            line(label, {end + back + side, end, end + back - side});
        } else if (label.leader->arrow == 3) {
            const Loop2 dot = Outline::circle(end, size / 2).corners;
            line(label, dot);
            figures.back().kind = Primitive::kFill;
        }
    }

    DrawingContext& m_context;
    const ViewScene& m_scene;
    LabelAnchors m_anchors;
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
