#pragma once

#include "records/StructRecord.h"

/// Which dimensions a view gets: a list of items, each naming a dimension request.
struct StructDetViewDimStrategy : StructRecord {
    KorString description;           ///< for users
    double firstLineDistance = 10.0; ///< mm on paper
    double lineSpacing = 7.0;        ///< mm on paper
    std::int32_t mergeEqual = 1;     ///< 1: neighbouring equal ones are written as one

    bool operator==(const StructDetViewDimStrategy&) const = default;
};

/// One dimension request of a dimensioning.
struct StructDetViewDimStrategyItem : StructRecord {
    std::int32_t strategyKey = 0;   ///< the dimensioning that it is part of
    std::int32_t order = 0;         ///< from 1; the line nearest to the view first
    std::int32_t dimRequestKey = 0; ///< the request; 0: none yet

    bool operator==(const StructDetViewDimStrategyItem&) const = default;
};

/// One dimension line: what is dimensioned, in which direction, between which points.
struct StructDetViewDimRequestLinear : StructRecord {
    std::int32_t groupKey = 0;             ///< in which it is filed
    std::int32_t requestTypeKey = 0;       ///< kind of dimension
    std::int32_t directionKey = 0;         ///< of the dimension line
    std::int32_t ordinateTypeKey = 0;      ///< this and the next two: of ordinates only
    std::int32_t ordinatePositionKey = 0;  ///< where their values stand
    std::int32_t ordinateReferenceKey = 0; ///< where they count from
    KorString titleFormat;                 ///< as the label designer encodes it; empty: no title
    std::int32_t titlePosition = 0;        ///< place of the title at the line
    double minimumLength = 0.0;            ///< mm; shorter dimensions are left out
    std::int32_t chained = 1;              ///< 1: from point to point; 0: all from the first point
    std::int32_t startPointsKey = 0;       ///< point selections
    std::int32_t innerPointsKey = 0;       ///< between start and end; 0: none
    std::int32_t endPointsKey = 0;         ///< 0: none

    std::int32_t getGroup() const { return groupKey; }

    bool operator==(const StructDetViewDimRequestLinear&) const = default;
};

/// A named group of dimension requests.
struct StructDetViewDimRequestLinearGroup : StructRecord {
    std::int32_t order = 0; ///< in which groups are offered
    bool operator==(const StructDetViewDimRequestLinearGroup&) const = default;
};

/// Which points of which objects are dimensioned.
struct StructDetViewDimPointSelection : StructRecord {
    std::int32_t qualifierSetKey = 0;         ///< the objects
    std::int32_t pointTypeKey = 0;            ///< which of their points
    std::int32_t geomRestrictionsKey = 0;     ///< where on the object; 0: anywhere
    std::int32_t parentRelaPosKey = 0;        ///< side of the main part
    std::int32_t geometricRestrictionKey = 0; ///< 0: none
    std::int32_t maximumCount = 0;            ///< 0: all
    std::int32_t includeHidden = 0;           ///< 1: points of hidden objects too

    bool operator==(const StructDetViewDimPointSelection&) const = default;
};

/// A kind of point, such as the ends of a part.
struct StructDetViewDimPointtype : StructRecord {
    std::int32_t pointType = 0; ///< by which hosts know it
    std::int32_t bitmapKey = 0; ///< the picture beside its name
    bool operator==(const StructDetViewDimPointtype&) const = default;
};

/// Where on its object a point must lie.
struct StructDetVwDimGeomRestrictions : StructRecord {
    std::int32_t restriction = 0; ///< by which hosts know it
    std::int32_t bitmapKey = 0;   ///< the picture beside its name
    bool operator==(const StructDetVwDimGeomRestrictions&) const = default;
};

/// On which side of the main part an object must lie.
struct StructDetVwDimParentRelaPosRestriction : StructRecord {
    std::int32_t position = 0; ///< by which hosts know it
    bool operator==(const StructDetVwDimParentRelaPosRestriction&) const = default;
};

/// A restriction that holds within a tolerance.
struct StructDetGeometricRestrictions : StructRecord {
    std::int32_t restriction = 0; ///< by which hosts know it
    double tolerance = 0.0;       ///< mm
    std::int32_t bitmapKey = 0;   ///< the picture beside its name
    bool operator==(const StructDetGeometricRestrictions&) const = default;
};

/// A kind of dimension.
struct StructDetRequestType : StructRecord {
    std::int32_t requestType = 0; ///< 0 linear, 1 ordinate, 2 radial, 3 angular, 4 level
    std::int32_t bitmapKey = 0;   ///< the picture beside its name
    bool operator==(const StructDetRequestType&) const = default;
};

/// A direction of dimension lines.
struct StructDetRequestLinearDirection : StructRecord {
    std::int32_t direction = 0; ///< 0 horizontal, 1 vertical, 2 along the part, 3 across it
    double angle = 0.0;         ///< degrees
    bool operator==(const StructDetRequestLinearDirection&) const = default;
};

/// A kind of ordinate dimension.
struct StructDetOrdinateDimType : StructRecord {
    std::int32_t ordinateType = 0; ///< by which hosts know it
    bool operator==(const StructDetOrdinateDimType&) const = default;
};

/// Where the values of ordinates stand.
struct StructDetOrdinatePosition : StructRecord {
    std::int32_t position = 0; ///< by which hosts know it
    bool operator==(const StructDetOrdinatePosition&) const = default;
};

/// Where ordinates count from.
struct StructDetOrdinateReference : StructRecord {
    std::int32_t reference = 0; ///< by which hosts know it
    bool operator==(const StructDetOrdinateReference&) const = default;
};
