#include "records/OwnWords.h"

#include "base/Translation.h"

#include <algorithm>

namespace OwnWords {

namespace {

constexpr eTableType kTables[] = {
    kTableViewSelectMode,
    kTableArrangeDirection,
    kTableSystemSource,
    kTableProcessScaleOverride,
    kTableAreaType,
    kTableDepthPosition,
    kTableOrientation,
    kTableReferenceAxis,
    kTableVisibilityStatus,
    kTableBeamPositionCalculation,
    kTableObjectPosition,
    kTableClippingType,
    kTableRequestType,
    kTableLinearDirection,
    kTableOrdinateDimType,
    kTableOrdinatePosition,
    kTableOrdinateReference,
    kTablePointType,
    kTableDimGeomRestrictions,
    kTableParentRelaPos,
    kTableGeometricRestrictions,
    kTableModelType,
    kTableModelRole,
    kTableQualifier,
    kTableSelectionStrategy,
    kTableScaleGroup,
    kTableBitmap,
    kTableBitmapIndex,
};

} // namespace

bool areIn(eTableType table) {
    return std::ranges::find(kTables, table) != std::end(kTables);
}

KorString nameOf(eTableType table, const StructRecord& record) {
    return nameOf(table, record.name);
}

KorString nameOf(eTableType table, const KorString& name) {
    return areIn(table) && !name.isEmpty() ? translated(name.view()) : name;
}

const StructRecord* find(eTableType table, const RowArray& rows, const KorString& text) {
    for (int i = 0; areIn(table) && i < rows.size(); ++i)
        if (!text.isEmpty() && nameOf(table, rows.at(i)) == text)
            return &rows.at(i);
    return nullptr;
}

} // namespace OwnWords
