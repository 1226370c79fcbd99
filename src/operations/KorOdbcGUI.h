#pragma once

#include "base/KorAddInId.h"
#include "operations/StyleReadOperations.h"

/// Name lists, reads, whole tables and the sharing and in-use checks of the current source. Lists hold the
/// run names of all rows in the order of their keys and return how many there are.
class KorOdbcGUI : public StyleReadOperations {
public:
    /// Makes an add-in's definitions the ones that the source pair (15, index) stands for. Returns 1 when its
    /// database is open.
    static int switchKordoDetailsCurrent(const KorAddInId& addIn);

#define KOR_NAMES(operation, Record)                                                                         \
    static int operation(KorArray<KorString>& names) {                                                       \
        return StyleReads::names<Record>(names);                                                             \
    }

    KOR_NAMES(getDetBaseCategoryList, StructDetBaseCategory)
    KOR_NAMES(getDetViewRequestList, StructDetViewRequest)
    KOR_NAMES(getDetViewSelectModeList, StructDetViewSelectMode)
    KOR_NAMES(getDetViewRequestProcessOverideList, StructDetailProcessScaleOverride)
    KOR_NAMES(getDetViewArrangeStrategyList, StructDetViewArrangeStrategy)
    KOR_NAMES(getDetViewArrangeDirectionList, StructDetViewArrangeDirection)
    KOR_NAMES(getDetViewLengthClipList, StructDetViewLengthClip)
    KOR_NAMES(getDetViewSystemAndBoxList, StructDetViewSystemAndBox)
    KOR_NAMES(getDetViewSystemSourcesList, StructDetViewSystemSource)
    KOR_NAMES(getDetViewDimStrategyList, StructDetViewDimStrategy)
    KOR_NAMES(getDetViewDimRequestLinearList, StructDetViewDimRequestLinear)
    KOR_NAMES(getDetViewDimPointSelectionList, StructDetViewDimPointSelection)
    KOR_NAMES(getDetViewDimPointtypeList, StructDetViewDimPointtype)
    KOR_NAMES(getDetVwDimGeomRestrictionsList, StructDetVwDimGeomRestrictions)
    KOR_NAMES(getDetVwDimParentRelaPosRestrictionList, StructDetVwDimParentRelaPosRestriction)
    KOR_NAMES(getDetViewObjReprMapList, StructDetObjReprMap)
    KOR_NAMES(getDetObjAnnotationStrategyList, StructDetObjAnnotationStrategy)
    KOR_NAMES(getDetAnnotationTypeList, StructDetAnnotationType)
    KOR_NAMES(getDetArrangerControlList, StructDetArrangerControl)
    KOR_NAMES(getDetArrangerStrategyList, StructDetArrangerStrategy)
    KOR_NAMES(getDetObjAppearanceList, StructDetObjAppearance)
    KOR_NAMES(getDetObjQualifierSetList, StructDetObjQualifierSet)
    KOR_NAMES(getDetObjQualifierList, StructDetObjQualifier)
    KOR_NAMES(getDetObjQualifierFilterList, StructDetObjQualifierFilter)
    KOR_NAMES(getDetObjSelectionStrategyList, StructDetObjSelectionStrategy)
    KOR_NAMES(getDetRequestLinearDirectionList, StructDetRequestLinearDirection)
    KOR_NAMES(getDetOrdinatePositionList, StructDetOrdinatePosition)
    KOR_NAMES(getDetOrdinateReferenceList, StructDetOrdinateReference)
    KOR_NAMES(getDetailAreaTypeList, StructDetailAreaType)
    KOR_NAMES(getDetailDepthPositionList, StructDetailDepthPosition)
    KOR_NAMES(getDetailOrientationList, StructDetailOrientation)
    KOR_NAMES(getDetailReferenceAxisList, StructDetailReferenceAxis)
    KOR_NAMES(getDetailVisibilityStatusList, StructDetailVisibilityStatus)
    KOR_NAMES(getDetHcadSettingsList, StructDetHcadSettings)
    KOR_NAMES(getDetGridReferenceSettingList, StructDetGridRefSettings)
    KOR_NAMES(getDetHatchSettingList, StructDetHatchSettings)
    KOR_NAMES(getDetLeaderStyleList, StructDetLeaderStyle)
    KOR_NAMES(getLinetypesList, StructLinetypes)
    KOR_NAMES(getClippingTypeList, StructClippingType)
    KOR_NAMES(getObjectPositionList, StructDetObjectPosition)
#undef KOR_NAMES

    static int getDetBaseCategoriesTable(KorArray<StructDetBaseCategory>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetRequestTypeTable(KorArray<StructDetRequestType>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetViewSystemSourcesTable(KorArray<StructDetViewSystemSource>& rows) {
        return StyleReads::all(rows);
    }
    static int getClippingGapTable(KorArray<StructClippingGap>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetObjAnnotationGroupList(KorArray<StructDetObjAnnotationGroup>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetObjQualifierSetGroupTable(KorArray<StructDetObjQualifierSetGroup>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetViewDimRequestLinearGroupList(KorArray<StructDetViewDimRequestLinearGroup>& rows) {
        return StyleReads::all(rows);
    }

    static int getDetailMaster(const KorString& runName, StructDetailMaster& record) {
        return StyleReads::read(runName, record);
    }
    /// The master row of the detail style with this key.
    static int getDetailMaster(long styleKey, StructDetailMaster& record);
    /// The master row with this pair of numbers.
    static int getDetailMaster(long detailKey, long number, StructDetailMaster& record);

    static int getDetViewCalloutTitleTemplate(const KorString& request, KorString& title);
    static int getDetViewUsedForCutsAndCallouts(const KorString& request, int& used);
    static int getDetObjQualifierFilterByRunName(const KorString& runName,
                                                 StructDetObjQualifierFilter& record) {
        return StyleReads::read(runName, record);
    }
    /// Number of the picture that explains a geometric restriction.
    static int getGeomRestrictionBitmapId(const KorOdbcKey& key, int& bitmap);
    /// Splits a text at every occurrence of `delimiter`; empty parts are left out. Returns how many there
    /// are.
    static int getTokens(const KorString& text, const KorString& delimiter, KorArray<KorString>& tokens);

    /// Whether another record still refers to the row; such a row must not be deleted. True in a source that
    /// is not complete.
    static bool findAnnotationStrategy(const KorOdbcKey& key) {
        return isUsed(kTableAnnotationStrategy, key);
    }
    static bool findQualifierSet(const KorOdbcKey& key) {
        return isUsed(kTableQualifierSet, key);
    }
    static bool findDimensionRequest(const KorOdbcKey& key) {
        return isUsed(kTableDimRequest, key);
    }

    /// Whether the row is used by more than one owner. A row whose only owner has several owners itself
    /// counts as shared, because a change of it shows in all of those.
#define KOR_SHARED(operation, table)                                                                         \
    static bool operation(const KorOdbcKey& key) {                                                           \
        return isShared(table, key);                                                                         \
    }

    KOR_SHARED(isViewArrangeStrategyShared, kTableViewArrangeStrategy)
    KOR_SHARED(isViewRequestShared, kTableViewRequest)
    KOR_SHARED(isObjReprMapRuleShared, kTableReprMap)
    KOR_SHARED(isSystemAndBoxShared, kTableSystemAndBox)
    KOR_SHARED(isViewDimStrategyShared, kTableViewDimStrategy)
    KOR_SHARED(isViewLengthClipShared, kTableLengthClip)
    KOR_SHARED(isAnnotationStrategyShared, kTableAnnotationStrategy)
    KOR_SHARED(isAnnotationTypeShared, kTableAnnotationType)
    KOR_SHARED(isArrangerControlShared, kTableArrangerControl)
    KOR_SHARED(isArrangerStrategyShared, kTableArrangerStrategy)
    KOR_SHARED(isDimensionRequestShared, kTableDimRequest)
    KOR_SHARED(isDimPointSelectionShared, kTablePointSelection)
    KOR_SHARED(isQualifierSetShared, kTableQualifierSet)
#undef KOR_SHARED

    /// Whether rows of this table can be shared at all, that is whether one of the checks above is its own.
    static bool canBeShared(eTableType table);
    static bool isShared(eTableType table, const KorOdbcKey& key);

private:
    static bool isUsed(eTableType table, const KorOdbcKey& key);
};
