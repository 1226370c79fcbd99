#pragma once

#include "records/CatalogueRecords.h"
#include "records/DimensionRecords.h"
#include "records/ObjectRecords.h"
#include "records/StyleRecords.h"
#include "records/TableSchema.h"
#include "records/ViewRecords.h"

// clang-format off
template <> inline constexpr eTableType tableOf<StructDetailStyle> = kTableDetailStyle;
template <> inline constexpr eTableType tableOf<StructDetViewArrangeStrategy> = kTableViewArrangeStrategy;
template <> inline constexpr eTableType tableOf<StructDetViewRequest> = kTableViewRequest;
template <> inline constexpr eTableType tableOf<StructDetObjReprMapKey> = kTableReprMapEntry;
template <> inline constexpr eTableType tableOf<StructDetObjReprMap> = kTableReprMap;
template <> inline constexpr eTableType tableOf<StructDetViewSystemAndBox> = kTableSystemAndBox;
template <> inline constexpr eTableType tableOf<StructDetObjAppearance> = kTableAppearance;
template <> inline constexpr eTableType tableOf<StructDetViewDimStrategy> = kTableViewDimStrategy;
template <> inline constexpr eTableType tableOf<StructDetViewLengthClip> = kTableLengthClip;
template <> inline constexpr eTableType tableOf<StructDetObjAnnotationStrategy> = kTableAnnotationStrategy;
template <> inline constexpr eTableType tableOf<StructDetAnnotationType> = kTableAnnotationType;
template <> inline constexpr eTableType tableOf<StructDetArrangerControl> = kTableArrangerControl;
template <> inline constexpr eTableType tableOf<StructDetArrangerStrategy> = kTableArrangerStrategy;
template <> inline constexpr eTableType tableOf<StructDetViewDimRequestLinear> = kTableDimRequest;
template <> inline constexpr eTableType tableOf<StructDetViewDimPointSelection> = kTablePointSelection;
template <> inline constexpr eTableType tableOf<StructDetailMaster> = kTableDetailMaster;
template <> inline constexpr eTableType tableOf<StructDetObjQualifierSet> = kTableQualifierSet;
template <> inline constexpr eTableType tableOf<StructDetViewDimStrategyItem> = kTableDimStrategyItem;
template <> inline constexpr eTableType tableOf<StructDetRequestType> = kTableRequestType;
template <> inline constexpr eTableType tableOf<StructDetObjQualifierWithRole> = kTableQualifierWithRole;
template <> inline constexpr eTableType tableOf<StructDetObjQualifier> = kTableQualifier;
template <> inline constexpr eTableType tableOf<StructDetObjQualifierFilter> = kTableQualifierFilter;
template <> inline constexpr eTableType tableOf<StructLinetypes> = kTableLinetypes;
template <> inline constexpr eTableType tableOf<StructDetBaseCategory> = kTableBaseCategory;
template <> inline constexpr eTableType tableOf<StructDetViewRequestCategory> = kTableViewRequestCategory;
template <> inline constexpr eTableType tableOf<StructDetViewSelectMode> = kTableViewSelectMode;
template <> inline constexpr eTableType tableOf<StructDetObjAnnotationGroup> = kTableAnnotationGroup;
template <> inline constexpr eTableType tableOf<StructDetViewDimRequestLinearGroup> = kTableDimRequestGroup;
template <> inline constexpr eTableType tableOf<StructDetObjQualifierSetGroup> = kTableQualifierSetGroup;
template <> inline constexpr eTableType tableOf<StructDetObjSelectionStrategy> = kTableSelectionStrategy;
template <> inline constexpr eTableType tableOf<StructDetViewArrangeDirection> = kTableArrangeDirection;
template <> inline constexpr eTableType tableOf<StructDetViewSystemSource> = kTableSystemSource;
template <> inline constexpr eTableType tableOf<StructDetailProcessScaleOverride> = kTableProcessScaleOverride;
template <> inline constexpr eTableType tableOf<StructClippingGap> = kTableClippingGap;
template <> inline constexpr eTableType tableOf<StructClippingType> = kTableClippingType;
template <> inline constexpr eTableType tableOf<StructDetViewDimPointtype> = kTablePointType;
template <> inline constexpr eTableType tableOf<StructDetVwDimGeomRestrictions> = kTableDimGeomRestrictions;
template <> inline constexpr eTableType tableOf<StructDetVwDimParentRelaPosRestriction> = kTableParentRelaPos;
template <> inline constexpr eTableType tableOf<StructDetGeometricRestrictions> = kTableGeometricRestrictions;
template <> inline constexpr eTableType tableOf<StructDetRequestLinearDirection> = kTableLinearDirection;
template <> inline constexpr eTableType tableOf<StructDetOrdinateDimType> = kTableOrdinateDimType;
template <> inline constexpr eTableType tableOf<StructDetOrdinatePosition> = kTableOrdinatePosition;
template <> inline constexpr eTableType tableOf<StructDetOrdinateReference> = kTableOrdinateReference;
template <> inline constexpr eTableType tableOf<StructDetHcadSettings> = kTableHcadSettings;
template <> inline constexpr eTableType tableOf<StructDetGridRefSettings> = kTableGridRefSettings;
template <> inline constexpr eTableType tableOf<StructDetHatchSettings> = kTableHatchSettings;
template <> inline constexpr eTableType tableOf<StructDetLeaderStyle> = kTableLeaderStyle;
template <> inline constexpr eTableType tableOf<StructDetModelType> = kTableModelType;
template <> inline constexpr eTableType tableOf<StructDetailAreaType> = kTableAreaType;
template <> inline constexpr eTableType tableOf<StructDetailDepthPosition> = kTableDepthPosition;
template <> inline constexpr eTableType tableOf<StructDetailOrientation> = kTableOrientation;
template <> inline constexpr eTableType tableOf<StructDetailReferenceAxis> = kTableReferenceAxis;
template <> inline constexpr eTableType tableOf<StructDetailVisibilityStatus> = kTableVisibilityStatus;
template <> inline constexpr eTableType tableOf<StructBeamPositionCalculation> = kTableBeamPositionCalculation;
template <> inline constexpr eTableType tableOf<StructBitmap> = kTableBitmap;
template <> inline constexpr eTableType tableOf<StructBitmapIndex> = kTableBitmapIndex;
template <> inline constexpr eTableType tableOf<StructDetObjectPosition> = kTableObjectPosition;
template <> inline constexpr eTableType tableOf<StructTextSize> = kTableTextSize;
template <> inline constexpr eTableType tableOf<StructScaleGroup> = kTableScaleGroup;
template <> inline constexpr eTableType tableOf<StructScale> = kTableScale;
template <> inline constexpr eTableType tableOf<StructNumericDefault> = kTableNumericDefault;
template <> inline constexpr eTableType tableOf<StructCreationDefault> = kTableCreationDefault;
template <> inline constexpr eTableType tableOf<StructModelRole> = kTableModelRole;
// clang-format on

/// The table declarations of each family, called once by `allTables`.
void declareStyleTables(std::vector<TableSchema>& tables);
void declareViewTables(std::vector<TableSchema>& tables);
void declareObjectTables(std::vector<TableSchema>& tables);
void declareDimensionTables(std::vector<TableSchema>& tables);
void declareCatalogueTables(std::vector<TableSchema>& tables);
