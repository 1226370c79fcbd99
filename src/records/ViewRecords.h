#pragma once

#include "records/StructRecord.h"

/// One view that a detail style produces.
struct StructDetViewRequest : StructRecord {
    std::int32_t systemAndBoxKey = 0;
    std::int32_t reprMapKey = 0;
    std::int32_t depthPositionKey = 0;
    std::int32_t selectModeKey = 0;
    std::int32_t dimStrategyKey = 0;
    std::int32_t visibilityStatusKey = 0;
    std::int32_t areaTypeKey = 0;
    std::int32_t lengthClipKey = 0;
    double scale = 0.1; ///< paper length over model length
    std::int32_t arrangeDirectionKey = 0;
    std::int32_t compassKey = 0; ///< 0 none, else corner 1..4 + 4 x representation (0 arrow, 1 symbol)
    std::int32_t compassInOverviews = 0; ///< 0 top left, 1 top right, 2 bottom left, 3 bottom right
    std::int32_t processScaleOverrideKey = 0;
    std::int32_t beamPositionCalculationKey = 0;
    std::int32_t usedForCutsAndCallouts = 0;
    KorString calloutTitleTemplate;

    bool operator==(const StructDetViewRequest&) const = default;
};

/// Files a view request under a category; a request may have several.
struct StructDetViewRequestCategory : StructRecord {
    std::int32_t viewRequestKey = 0;
    std::int32_t categoryKey = 0;

    bool operator==(const StructDetViewRequestCategory&) const = default;
};

/// From where a view looks, and which box of the model it shows.
struct StructDetViewSystemAndBox : StructRecord {
    std::int32_t systemSourceKey = 0;
    std::int32_t orientationKey = 0;
    std::int32_t referenceAxisKey = 0;
    std::int32_t depthPositionKey = 0;
    double boxFrontDepth = 100.0; ///< mm before the view plane
    double boxBackDepth = 100.0;  ///< mm behind the view plane
    double boxMargin = 50.0;      ///< mm around the part
    double rotation = 0.0;        ///< degrees about the view direction
    std::int32_t mirrored = 0;

    bool operator==(const StructDetViewSystemAndBox&) const = default;
};

/// How a long part is shortened in a view by cutting out stretches of its length.
struct StructDetViewLengthClip : StructRecord {
    std::int32_t alongX = 1;
    std::int32_t alongY = 0;
    double keepEachSide = 150.0;       ///< mm kept on each side of a clipping area
    double interval = 1000.0;          ///< mm; clipping starts at constant intervals of this length
    double extension = -1.0;           ///< mm; -1: the default is used
    std::int32_t clippingTypeKey = -1; ///< -1: the default
    std::int32_t linetypeKey = -1;     ///< -1: the default
    std::int32_t clipObliqueLines = 0;
    double gap = -1.0; ///< mm width of the clipping representation; -1: the default

    bool operator==(const StructDetViewLengthClip&) const = default;
};

struct StructClippingGap : StructRecord {
    double gap = 0.0; ///< mm; -1: the default

    bool operator==(const StructClippingGap&) const = default;
};

struct StructClippingType : StructRecord {
    std::int32_t picture1 = 0; ///< picture numbers, one per clipping situation
    std::int32_t picture2 = 0;
    std::int32_t picture3 = 0;
    std::int32_t picture4 = 0;

    bool operator==(const StructClippingType&) const = default;
};

struct StructLinetypes : StructRecord {
    KorString filePath;          ///< with backslashes; a bare file name lies in the support folder
    std::int32_t lineTypeId = 0; ///< 0: a line type from a file

    bool operator==(const StructLinetypes&) const = default;
};

struct StructDetViewSelectMode : StructRecord {
    std::int32_t mode = 0;
    bool operator==(const StructDetViewSelectMode&) const = default;
};

struct StructDetViewArrangeDirection : StructRecord {
    std::int32_t direction = 0;
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetViewArrangeDirection&) const = default;
};

struct StructDetViewSystemSource : StructRecord {
    std::int32_t source = 0;
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetViewSystemSource&) const = default;
};

struct StructDetailProcessScaleOverride : StructRecord {
    std::int32_t mode = 0;
    double factor = 1.0;
    bool operator==(const StructDetailProcessScaleOverride&) const = default;
};

struct StructDetailAreaType : StructRecord {
    std::int32_t areaType = 0;
    bool operator==(const StructDetailAreaType&) const = default;
};

struct StructDetailDepthPosition : StructRecord {
    std::int32_t position = 0;
    double distance = 0.0; ///< mm from the part's reference plane
    bool operator==(const StructDetailDepthPosition&) const = default;
};

struct StructDetailOrientation : StructRecord {
    std::int32_t orientation = 0;
    double angle = 0.0; ///< degrees
    bool operator==(const StructDetailOrientation&) const = default;
};

struct StructDetailReferenceAxis : StructRecord {
    std::int32_t axis = 0;
    bool operator==(const StructDetailReferenceAxis&) const = default;
};

struct StructDetailVisibilityStatus : StructRecord {
    std::int32_t status = 0; ///< 0 not drawn, 1 visible, 2 hidden lines
    bool operator==(const StructDetailVisibilityStatus&) const = default;
};

struct StructBeamPositionCalculation : StructRecord {
    std::int32_t calculation = 0;
    bool operator==(const StructBeamPositionCalculation&) const = default;
};

struct StructDetObjectPosition : StructRecord {
    std::int32_t position = 0;
    bool operator==(const StructDetObjectPosition&) const = default;
};
