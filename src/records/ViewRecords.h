#pragma once

#include "records/StructRecord.h"

/// One view that a detail style produces.
struct StructDetViewRequest : StructRecord {
    std::int32_t systemAndBoxKey = 0;     ///< from where it looks; 0: not said yet
    std::int32_t reprMapKey = 0;          ///< how its objects are drawn; 0: not said yet
    std::int32_t depthPositionKey = 0;    ///< where its depth is measured from
    std::int32_t selectModeKey = 0;       ///< when it is drawn at all
    std::int32_t dimStrategyKey = 0;      ///< its dimensions; 0: none
    std::int32_t visibilityStatusKey = 0; ///< whether and how its lines are drawn
    std::int32_t areaTypeKey = 0;         ///< which area it shows
    std::int32_t lengthClipKey = 0;       ///< how long parts are shortened; 0: none
    double scale = 0.1;                   ///< paper length over model length
    std::int32_t arrangeDirectionKey = 0; ///< where it goes beside the main view
    std::int32_t compassKey = 0; ///< 0 none, else corner 1..4 + 4 x representation (0 arrow, 1 symbol)
    std::int32_t compassInOverviews = 0;         ///< 0 top left, 1 top right, 2 bottom left, 3 bottom right
    std::int32_t processScaleOverrideKey = 0;    ///< how its scale is adapted
    std::int32_t beamPositionCalculationKey = 0; ///< how positions of beams are counted
    std::int32_t usedForCutsAndCallouts = 0;     ///< 1: also the pattern of cuts and callouts
    KorString calloutTitleTemplate;              ///< of their titles; as the label designer encodes it

    bool operator==(const StructDetViewRequest&) const = default;
};

/// Files a view request under a category; a request may have several.
struct StructDetViewRequestCategory : StructRecord {
    std::int32_t viewRequestKey = 0; ///< the view that it is part of
    std::int32_t categoryKey = 0;    ///< where it is listed

    bool operator==(const StructDetViewRequestCategory&) const = default;
};

/// From where a view looks, and which box of the model it shows.
struct StructDetViewSystemAndBox : StructRecord {
    std::int32_t systemSourceKey = 0;  ///< whose axes the view has
    std::int32_t orientationKey = 0;   ///< about these axes
    std::int32_t referenceAxisKey = 0; ///< that the view follows
    std::int32_t depthPositionKey = 0; ///< where the depths are measured from
    double boxFrontDepth = 100.0;      ///< mm before the view plane
    double boxBackDepth = 100.0;       ///< mm behind the view plane
    double boxMargin = 50.0;           ///< mm around the part
    double rotation = 0.0;             ///< degrees about the view direction
    std::int32_t mirrored = 0;         ///< 1: left and right exchanged

    bool operator==(const StructDetViewSystemAndBox&) const = default;
};

/// How a long part is shortened in a view by cutting out stretches of its length.
struct StructDetViewLengthClip : StructRecord {
    std::int32_t alongX = 1;           ///< 1: shortened in the X direction of the view
    std::int32_t alongY = 0;           ///< 1: in its Y direction
    double keepEachSide = 150.0;       ///< mm kept on each side of a clipping area
    double interval = 1000.0;          ///< mm; clipping starts at constant intervals of this length
    double extension = -1.0;           ///< mm; -1: the default is used
    std::int32_t clippingTypeKey = -1; ///< -1: the default
    std::int32_t linetypeKey = -1;     ///< -1: the default
    std::int32_t clipObliqueLines = 0; ///< 1: oblique lines are clipped too
    double gap = -1.0;                 ///< mm width of the clipping representation; -1: the default

    bool operator==(const StructDetViewLengthClip&) const = default;
};

/// A width that is offered for the cut-out stretch.
struct StructClippingGap : StructRecord {
    double gap = 0.0; ///< mm; -1: the default

    bool operator==(const StructClippingGap&) const = default;
};

/// How a cut-out stretch is shown.
struct StructClippingType : StructRecord {
    std::int32_t picture1 = 0; ///< picture numbers, one per clipping situation
    std::int32_t picture2 = 0; ///< without a gap
    std::int32_t picture3 = 0; ///< with an extension
    std::int32_t picture4 = 0; ///< with an extension, without a gap

    bool operator==(const StructClippingType&) const = default;
};

/// A line type of the host, or one from a file.
struct StructLinetypes : StructRecord {
    KorString filePath;          ///< with backslashes; a bare file name lies in the support folder
    std::int32_t lineTypeId = 0; ///< 0: a line type from a file

    bool operator==(const StructLinetypes&) const = default;
};

/// When a view is drawn at all.
struct StructDetViewSelectMode : StructRecord {
    std::int32_t mode = 0; ///< by which hosts know it
    bool operator==(const StructDetViewSelectMode&) const = default;
};

/// On which side of the main view a view goes.
struct StructDetViewArrangeDirection : StructRecord {
    std::int32_t direction = 0; ///< by which hosts know it
    std::int32_t bitmapKey = 0; ///< the picture beside its name
    bool operator==(const StructDetViewArrangeDirection&) const = default;
};

/// Whose axes a view takes.
struct StructDetViewSystemSource : StructRecord {
    std::int32_t source = 0;    ///< by which hosts know it
    std::int32_t bitmapKey = 0; ///< the picture beside its name
    bool operator==(const StructDetViewSystemSource&) const = default;
};

/// How the scale of a view is adapted.
struct StructDetailProcessScaleOverride : StructRecord {
    std::int32_t mode = 0; ///< 0: the scale of the view holds
    double factor = 1.0;   ///< by which the scale is multiplied
    bool operator==(const StructDetailProcessScaleOverride&) const = default;
};

/// Which area a view shows.
struct StructDetailAreaType : StructRecord {
    std::int32_t areaType = 0; ///< by which hosts know it
    bool operator==(const StructDetailAreaType&) const = default;
};

/// A plane from which the depth of a view is measured.
struct StructDetailDepthPosition : StructRecord {
    std::int32_t position = 0; ///< by which hosts know it
    double distance = 0.0;     ///< mm from the part's reference plane
    bool operator==(const StructDetailDepthPosition&) const = default;
};

/// How a view is turned.
struct StructDetailOrientation : StructRecord {
    std::int32_t orientation = 0; ///< by which hosts know it
    double angle = 0.0;           ///< degrees
    bool operator==(const StructDetailOrientation&) const = default;
};

/// An axis that a view follows.
struct StructDetailReferenceAxis : StructRecord {
    std::int32_t axis = 0; ///< by which hosts know it
    bool operator==(const StructDetailReferenceAxis&) const = default;
};

/// Whether and how lines are drawn.
struct StructDetailVisibilityStatus : StructRecord {
    std::int32_t status = 0; ///< 0 not drawn, 1 visible, 2 hidden lines
    bool operator==(const StructDetailVisibilityStatus&) const = default;
};

/// Along or from what positions of beams are counted.
struct StructBeamPositionCalculation : StructRecord {
    std::int32_t calculation = 0; ///< by which hosts know it
    bool operator==(const StructBeamPositionCalculation&) const = default;
};

/// Where an object lies relative to the view plane.
struct StructDetObjectPosition : StructRecord {
    std::int32_t position = 0; ///< by which hosts know it
    bool operator==(const StructDetObjectPosition&) const = default;
};
