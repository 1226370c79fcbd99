#pragma once

#include "drawing/LabelAnchors.h"
#include "drawing/LeaderWay.h"

/// The kinds of labels, by the numbers that the records of their types have.
enum eLabelKind { kTextLabel, kPartMark, kWeldSymbol, kBoltMark, kLevelMark, kHoleMark };
/// What is drawn around a label.
enum eLabelFrame { kNoFrame, kBoxFrame, kCircleFrame };

/// A label before it has its place.
struct Label {
    const StructDetObjAnnotationStrategy* strategy = nullptr;
    const StructDetAnnotationType* type = nullptr; ///< these may be null
    const StructDetArrangerControl* control = nullptr;
    const StructDetArrangerStrategy* order = nullptr;
    const StructDetLeaderStyle* leader = nullptr;
    ProvenancePtr provenance;
    Primitives texts;          ///< about 0, 0
    Vec2 size;                 ///< with frame and symbol
    std::vector<Vec2> anchors; ///< at least one
    Vec2 anchor;               ///< the one that is used
    double rim = 0;            ///< around the anchor, where that is the centre of something round
    int object = -1;

    int frame() const { return type ? type->frame : static_cast<int>(kNoFrame); }
    int kind() const { return type ? type->annotationKind : static_cast<int>(kTextLabel); }
    /// Of one that has a leader.
    LeaderShape leaderShape() const;
};

/// The labels of a view: what its map's entries say for the objects that are seen, those of higher priority
/// first. Pieces of one name get one label, except on overviews.
std::vector<Label> labelsOf(DrawingContext& context, const ViewScene& scene, const LabelAnchors& anchors);
