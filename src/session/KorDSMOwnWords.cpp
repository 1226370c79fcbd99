#include "session/KorDSMOwnWords.h"

#include "base/Translation.h"
#include "data/StyleTable.h"

#include <algorithm>

namespace KorDSMOwnWords {

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

const StructRecord* find(const StyleTable& rows, const KorString& text) {
    const eTableType table = rows.schema().type;
    for (int i = 0; areIn(table) && i < rows.rows().size(); ++i)
        if (!text.isEmpty() && nameOf(table, rows.rows().at(i)) == text)
            return &rows.rows().at(i);
    return nullptr;
}

} // namespace KorDSMOwnWords
