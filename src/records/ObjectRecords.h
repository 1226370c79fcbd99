#pragma once

#include "records/StructRecord.h"

/// How the objects of a view are drawn and labelled: a list of entries.
struct StructDetObjReprMap : StructRecord {
    KorString description;          ///< for users
    std::int32_t hideUnmatched = 0; ///< objects that no entry selects are left out

    bool operator==(const StructDetObjReprMap&) const = default;
};

/// One entry of a representation map: these objects, drawn like this, labelled like that.
struct StructDetObjReprMapKey : StructRecord {
    std::int32_t reprMapKey = 0;            ///< the map that it is part of
    std::int32_t order = 0;                 ///< from 1; the first entry that fits decides
    std::int32_t qualifierSetKey = 0;       ///< which objects; 0: not said yet
    std::int32_t appearanceKey = 0;         ///< how they are drawn
    std::int32_t annotationStrategyKey = 0; ///< 0: no labels

    bool operator==(const StructDetObjReprMapKey&) const = default;
};

/// Line types, colours and hatching with which objects are drawn.
struct StructDetObjAppearance : StructRecord {
    std::int32_t visibleStatusKey = 0;   ///< whether visible edges are drawn
    std::int32_t visibleLinetypeKey = 0; ///< of visible edges
    std::int32_t visibleColor = 7;       ///< 0 to 256; 256: that of the layer
    std::int32_t hiddenStatusKey = 0;    ///< whether hidden edges are drawn
    std::int32_t hiddenLinetypeKey = 0;  ///< of hidden edges
    std::int32_t hiddenColor = 8;        ///< as for visible edges
    std::int32_t centreLines = 1;        ///< 1: drawn too
    std::int32_t hatchKey = 0;           ///< of cut faces; 0: none
    double lineWeight = 0.25;            ///< mm on paper

    bool operator==(const StructDetObjAppearance&) const = default;
};

/// A hatch of cut faces.
struct StructDetHatchSettings : StructRecord {
    KorString pattern = "ANSI31";
    double angle = 45.0;    ///< degrees
    double spacing = 3.0;   ///< mm on paper
    std::int32_t color = 8; ///< 0 to 256; 256: that of the layer

    bool operator==(const StructDetHatchSettings&) const = default;
};

/// What label objects get, and how the labels are placed.
struct StructDetObjAnnotationStrategy : StructRecord {
    std::int32_t groupKey = 0;            ///< in which it is filed
    std::int32_t annotationTypeKey = 0;   ///< what its labels look like
    std::int32_t arrangerControlKey = 0;  ///< how far they may move
    std::int32_t arrangerStrategyKey = 0; ///< how they are lined up
    KorString contents;                   ///< as the label designer encodes it
    std::int32_t repeatPerView = 1;       ///< 0: only in the first view that shows the object

    std::int32_t getGroup() const { return groupKey; }

    bool operator==(const StructDetObjAnnotationStrategy&) const = default;
};

/// What labels look like.
struct StructDetAnnotationType : StructRecord {
    std::int32_t annotationKind =
        0; ///< 0 text, 1 part mark, 2 weld symbol, 3 bolt mark, 4 level, 5 hole mark
    std::int32_t leaderStyleKey = 0; ///< 0: without a leader
    double textSize = 3.5;           ///< mm on paper
    std::int32_t frame = 0;          ///< 0 none, 1 box, 2 circle
    std::int32_t objectTypeKey = 0;  ///< number of the object type whose variables the contents offer

    bool operator==(const StructDetAnnotationType&) const = default;
};

/// The line from a label to its object.
struct StructDetLeaderStyle : StructRecord {
    std::int32_t arrow = 1; ///< number of the arrow; 0: none
    double arrowSize = 2.5; ///< mm on paper
    double landing = 4.0;   ///< mm on paper

    bool operator==(const StructDetLeaderStyle&) const = default;
};

/// How far labels may move from their objects.
struct StructDetArrangerControl : StructRecord {
    std::int32_t newArranger = 0;    ///< served by the second arranger
    double distance = 8.0;           ///< mm on paper
    double maxLeaderLength = 60.0;   ///< mm on paper
    std::int32_t sidePreference = 0; ///< 0 nearest, 1 left, 2 right, 3 above, 4 below
    std::int32_t allowOverlap = 0;   ///< 1: labels may cover lines

    bool operator==(const StructDetArrangerControl&) const = default;
};

/// In which order and direction labels are placed.
struct StructDetArrangerStrategy : StructRecord {
    std::int32_t direction = 0;   ///< 0 both, 1 horizontal, 2 vertical
    double spacing = 5.0;         ///< mm on paper
    std::int32_t alignToView = 1; ///< 1: lined up with the edge of the view
    std::int32_t priority = 0;    ///< the higher one is placed first

    bool operator==(const StructDetArrangerStrategy&) const = default;
};

/// A named group of annotation strategies.
struct StructDetObjAnnotationGroup : StructRecord {
    std::int32_t order = 0; ///< in which groups are offered
    bool operator==(const StructDetObjAnnotationGroup&) const = default;
};

/// A set of qualifiers that together pick out model objects.
struct StructDetObjQualifierSet : StructRecord {
    std::int32_t groupKey = 0;    ///< in which it is filed
    std::int32_t combination = 0; ///< 0 all qualifiers must hold, 1 any of them
    KorString description;        ///< for users

    std::int32_t getGroup() const { return groupKey; }

    bool operator==(const StructDetObjQualifierSet&) const = default;
};

/// A named group of qualifier sets.
struct StructDetObjQualifierSetGroup : StructRecord {
    std::int32_t order = 0; ///< in which groups are offered
    bool operator==(const StructDetObjQualifierSetGroup&) const = default;
};

/// One qualifier of a set, with the role that the object plays in the assembly.
struct StructDetObjQualifierWithRole : StructRecord {
    std::int32_t qualifierSetKey = 0; ///< the set that it is part of
    std::int32_t qualifierKey = 0;    ///< the property that is asked for
    std::int32_t modelRoleKey = 0;    ///< that the object must play
    std::int32_t filterKey = 0;       ///< what the property must be; 0: it must be there
    std::int32_t negate = 0;          ///< 1: must not hold

    bool operator==(const StructDetObjQualifierWithRole&) const = default;
};

/// A property of model objects that can be asked for.
struct StructDetObjQualifier : StructRecord {
    std::int32_t modelTypeKey = 0; ///< the kind of object that has it
    KorString property;            ///< name in the model
    std::int32_t order = 0;        ///< in which properties are offered

    bool operator==(const StructDetObjQualifier&) const = default;
};

/// What a property is compared with.
struct StructDetObjQualifierFilter : StructRecord {
    KorString expression; ///< such as "family in (I, H)"; may be empty
    double minimum = 0.0; ///< in the property's own unit
    double maximum = 0.0; ///< as the minimum

    bool operator==(const StructDetObjQualifierFilter&) const = default;
};

/// A kind of model object, such as a profile or a plate.
struct StructDetModelType : StructRecord {
    std::int32_t modelType = 0; ///< by which hosts know it
    bool operator==(const StructDetModelType&) const = default;
};

/// A role that an object plays in its assembly, such as main part or secondary part.
struct StructModelRole : StructRecord {
    std::int32_t role = 0; ///< by which hosts know it; 0: any
    bool operator==(const StructModelRole&) const = default;
};
