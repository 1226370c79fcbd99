#pragma once

#include "operations/StyleReads.h"

/// The record reads of every table, by run name and by key, of the current source. Each returns 1 when the
/// record was found and filled; any other value means that it was not, and leaves it untouched.
class StyleReadOperations {
public:
// NOLINTBEGIN(bugprone-macro-parentheses): types have none
#define KOR_READS(operation, Record)                                                                         \
    static int operation(const KorString& runName, Record& record) {                                         \
        return StyleReads::read(runName, record);                                                            \
    }                                                                                                        \
    static int operation(const KorOdbcKey& key, Record& record) {                                            \
        return StyleReads::read(key, record);                                                                \
    }
    // NOLINTEND(bugprone-macro-parentheses)

    KOR_READS(getDetailStyle, StructDetailStyle)
    KOR_READS(getDetBaseCategory, StructDetBaseCategory)
    KOR_READS(getDetViewArrangeStrategy, StructDetViewArrangeStrategy)
    KOR_READS(getDetObjSelectionStrategy, StructDetObjSelectionStrategy)
    KOR_READS(getDetGridReferenceSetting, StructDetGridRefSettings)
    KOR_READS(getDetHcadSettings, StructDetHcadSettings)
    KOR_READS(getDetViewRequest, StructDetViewRequest)
    KOR_READS(getDetViewRequestCategory, StructDetViewRequestCategory)
    KOR_READS(getDetViewSystemAndBox, StructDetViewSystemAndBox)
    KOR_READS(getDetViewLengthClip, StructDetViewLengthClip)
    KOR_READS(getDetViewSelectMode, StructDetViewSelectMode)
    KOR_READS(getDetViewArrangeDirection, StructDetViewArrangeDirection)
    KOR_READS(getDetViewSystemSource, StructDetViewSystemSource)
    KOR_READS(getDetailProcessScaleOverride, StructDetailProcessScaleOverride)
    KOR_READS(getLinetypes, StructLinetypes)
    KOR_READS(getDetailAreaType, StructDetailAreaType)
    KOR_READS(getDetailDepthPosition, StructDetailDepthPosition)
    KOR_READS(getDetailOrientation, StructDetailOrientation)
    KOR_READS(getDetailReferenceAxis, StructDetailReferenceAxis)
    KOR_READS(getDetailVisibilityStatus, StructDetailVisibilityStatus)
    KOR_READS(getObjectPosition, StructDetObjectPosition)
    KOR_READS(getDetObjReprMap, StructDetObjReprMap)
    KOR_READS(getDetViewObjReprMap, StructDetObjReprMap)
    KOR_READS(getDetObjReprMapKey, StructDetObjReprMapKey)
    KOR_READS(getDetObjAppearance, StructDetObjAppearance)
    KOR_READS(getDetHatchSetting, StructDetHatchSettings)
    KOR_READS(getDetObjAnnotationStrategy, StructDetObjAnnotationStrategy)
    KOR_READS(getDetObjAnnotationGroup, StructDetObjAnnotationGroup)
    KOR_READS(getDetAnnotationType, StructDetAnnotationType)
    KOR_READS(getDetLeaderStyle, StructDetLeaderStyle)
    KOR_READS(getDetArrangerControl, StructDetArrangerControl)
    KOR_READS(getDetArrangerStrategy, StructDetArrangerStrategy)
    KOR_READS(getDetObjQualifierSet, StructDetObjQualifierSet)
    KOR_READS(getDetObjQualifierSetGroup, StructDetObjQualifierSetGroup)
    KOR_READS(getDetObjQualifierWithRole, StructDetObjQualifierWithRole)
    KOR_READS(getDetObjQualifier, StructDetObjQualifier)
    KOR_READS(getDetObjQualifierFilter, StructDetObjQualifierFilter)
    KOR_READS(getDetModelType, StructDetModelType)
    KOR_READS(getDetViewDimStrategy, StructDetViewDimStrategy)
    KOR_READS(getDetViewDimStrategyItem, StructDetViewDimStrategyItem)
    KOR_READS(getDetViewDimRequestLinear, StructDetViewDimRequestLinear)
    KOR_READS(getDetViewDimRequestLinearGroup, StructDetViewDimRequestLinearGroup)
    KOR_READS(getDetViewDimPointSelection, StructDetViewDimPointSelection)
    KOR_READS(getDetViewDimPointtype, StructDetViewDimPointtype)
    KOR_READS(getDetVwDimGeomRestrictions, StructDetVwDimGeomRestrictions)
    KOR_READS(getDetVwDimParentRelaPosRestriction, StructDetVwDimParentRelaPosRestriction)
    KOR_READS(getDetGeometricRestrictions, StructDetGeometricRestrictions)
    KOR_READS(getDetRequestType, StructDetRequestType)
    KOR_READS(getDetRequestLinearDirection, StructDetRequestLinearDirection)
    KOR_READS(getDetOrdinateDimType, StructDetOrdinateDimType)
    KOR_READS(getDetOrdinatePosition, StructDetOrdinatePosition)
    KOR_READS(getDetOrdinateReference, StructDetOrdinateReference)
    KOR_READS(getBitmap, StructBitmap)
    KOR_READS(getBitmapIndex, StructBitmapIndex)
#undef KOR_READS

    /// The parts of a record, in the order in which they stand in it. Return how many there are.
    static int getDetObjReprMapEntries(const KorOdbcKey& map, KorArray<StructDetObjReprMapKey>& entries);
    static int getDetViewDimStrategyItems(const KorOdbcKey& strategy,
                                          KorArray<StructDetViewDimStrategyItem>& items);
    static int getDetObjQualifiersWithRole(const KorOdbcKey& set,
                                           KorArray<StructDetObjQualifierWithRole>& qualifiers);
    /// The categories under which a view request is filed.
    static int getDetViewRequestCategories(const KorOdbcKey& request,
                                           KorArray<StructDetViewRequestCategory>& categories);
};
