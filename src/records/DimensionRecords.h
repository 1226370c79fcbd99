#pragma once

#include "records/StructRecord.h"

/// Which dimensions a view gets: a list of items, each naming a dimension request.
struct StructDetViewDimStrategy : StructRecord {
    KorString description;
    double firstLineDistance = 10.0; ///< mm on paper
    double lineSpacing = 7.0;        ///< mm on paper
    std::int32_t mergeEqual = 1;

    bool operator==(const StructDetViewDimStrategy&) const = default;
};

struct StructDetViewDimStrategyItem : StructRecord {
    std::int32_t strategyKey = 0;
    std::int32_t order = 0;
    std::int32_t dimRequestKey = 0;

    bool operator==(const StructDetViewDimStrategyItem&) const = default;
};

/// One dimension line: what is dimensioned, in which direction, between which points.
struct StructDetViewDimRequestLinear : StructRecord {
    std::int32_t groupKey = 0;
    std::int32_t requestTypeKey = 0;
    std::int32_t directionKey = 0;
    std::int32_t ordinateTypeKey = 0;
    std::int32_t ordinatePositionKey = 0;
    std::int32_t ordinateReferenceKey = 0;
    KorString titleFormat;
    std::int32_t titlePosition = 0;
    double minimumLength = 0.0; ///< mm; shorter dimensions are left out
    std::int32_t chained = 1;
    std::int32_t startPointsKey = 0; ///< point selections
    std::int32_t innerPointsKey = 0;
    std::int32_t endPointsKey = 0;

    std::int32_t getGroup() const { return groupKey; }

    bool operator==(const StructDetViewDimRequestLinear&) const = default;
};

/// A named group of dimension requests.
struct StructDetViewDimRequestLinearGroup : StructRecord {
    std::int32_t order = 0;
    bool operator==(const StructDetViewDimRequestLinearGroup&) const = default;
};

/// Which points of which objects are dimensioned.
struct StructDetViewDimPointSelection : StructRecord {
    std::int32_t qualifierSetKey = 0;
    std::int32_t pointTypeKey = 0;
    std::int32_t geomRestrictionsKey = 0;
    std::int32_t parentRelaPosKey = 0;
    std::int32_t geometricRestrictionKey = 0;
    std::int32_t maximumCount = 0; ///< 0: all
    std::int32_t includeHidden = 0;

    bool operator==(const StructDetViewDimPointSelection&) const = default;
};

struct StructDetViewDimPointtype : StructRecord {
    std::int32_t pointType = 0;
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetViewDimPointtype&) const = default;
};

struct StructDetVwDimGeomRestrictions : StructRecord {
    std::int32_t restriction = 0;
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetVwDimGeomRestrictions&) const = default;
};

struct StructDetVwDimParentRelaPosRestriction : StructRecord {
    std::int32_t position = 0;
    bool operator==(const StructDetVwDimParentRelaPosRestriction&) const = default;
};

struct StructDetGeometricRestrictions : StructRecord {
    std::int32_t restriction = 0;
    double tolerance = 0.0; ///< mm
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetGeometricRestrictions&) const = default;
};

struct StructDetRequestType : StructRecord {
    std::int32_t requestType = 0; ///< 0 linear, 1 ordinate, 2 radial, 3 angular, 4 level
    std::int32_t bitmapKey = 0;
    bool operator==(const StructDetRequestType&) const = default;
};

struct StructDetRequestLinearDirection : StructRecord {
    std::int32_t direction = 0; ///< 0 horizontal, 1 vertical, 2 along the part, 3 across it
    double angle = 0.0;         ///< degrees
    bool operator==(const StructDetRequestLinearDirection&) const = default;
};

struct StructDetOrdinateDimType : StructRecord {
    std::int32_t ordinateType = 0;
    bool operator==(const StructDetOrdinateDimType&) const = default;
};

struct StructDetOrdinatePosition : StructRecord {
    std::int32_t position = 0;
    bool operator==(const StructDetOrdinatePosition&) const = default;
};

struct StructDetOrdinateReference : StructRecord {
    std::int32_t reference = 0;
    bool operator==(const StructDetOrdinateReference&) const = default;
};
