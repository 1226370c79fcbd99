#include "drawing/Annotations.h"

#include "base/Translation.h"
#include "drawing/LabelFigures.h"
#include "drawing/LabelRows.h"

#include <numbers>

namespace {

class Labelling {
public:
    Labelling(DrawingContext& context, const ViewScene& scene, const Primitives& drawn)
        : m_context(context), m_scene(scene), m_anchors(context, scene, drawn),
          m_rows(boxOf(drawn), scene.outline), m_placing(drawn), m_figures(context.pens.thin()) {}

    Primitives place() {
        std::vector<Label> labels = labelsOf(m_context, m_scene, m_anchors);
        for (Label& label : labels)
            if (label.control && label.control->newArranger != 0)
                label.anchor = m_rows.outermost(label);
        std::set<const Label*> placed;
        for (const auto& [label, middle] : m_rows.lineUp(labels, m_placing)) { // others keep clear of them
            draw(*label, middle);
            placed.insert(label);
        }
        for (Label& label : labels)
            if (!placed.contains(&label))
                placeAlone(label);
        if (m_placing.gaveUp())
            m_context.rows.note(KorString::format(
                translated("The view \"%s\" has so many labels that some of them cover others."),
                {m_scene.request->name}));
        return std::move(m_figures.all);
    }

private:
    static bool isOnObject(const Label& label) {
        return label.control && label.control->newArranger == 0 && label.control->maxLeaderLength <= 0;
    }

    // Whether it has room within the outline.
    bool isUponPlate(const Label& label) const {
        const Box2 box = m_anchors.boxOf(label.object);
        return isOnObject(label) && m_context.object(label.object).type == eObjectType::kPlate &&
               box.width() > 2 * label.size.u && box.height() > 2 * label.size.v;
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
        const bool isFramed = label.frame() != kNoFrame;
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
            m_figures.all.push_back(text);
        }
        return true;
    }

    WantedLabel wanted(const Label& label) const {
        WantedLabel wanted{label.anchors, label.size};
        if (!label.leader)
            wanted.leader.reset();
        else
            wanted.leader = label.leaderShape();
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

    void draw(Label& label, Vec2 middle) {
        m_figures.add(label, middle, m_context.object(label.object).role == eObjectRole::kSite);
    }

    DrawingContext& m_context;
    const ViewScene& m_scene;
    LabelAnchors m_anchors;
    LabelRows m_rows;
    LabelPlacing m_placing;
    LabelFigures m_figures;
};

} // namespace

Primitives annotationsOf(DrawingContext& context, const ViewScene& scene, const Primitives& drawn) {
    if (!scene.showsAnything || scene.outline.isEmpty())
        return {};
    return Labelling(context, scene, drawn).place();
}
