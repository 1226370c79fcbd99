#pragma once

#include "records/TableSchema.h"

#include <algorithm>
#include <string_view>
#include <vector>

/// The columns that a detail style reaches and that nobody edits on a page, and why.
struct ColumnsOnNoPage {
    std::vector<eTableType> tables;
    std::vector<int> columns;
    std::string_view why;
};

inline const std::vector<ColumnsOnNoPage>& columnsOnNoPage() {
    static const std::vector<ColumnsOnNoPage> rows = {
        {{kTableViewSelectMode, kTableProcessScaleOverride, kTableParentRelaPos, kTableLinearDirection,
          kTableOrdinateDimType, kTableOrdinatePosition, kTableOrdinateReference, kTableAreaType,
          kTableDepthPosition, kTableOrientation, kTableReferenceAxis, kTableVisibilityStatus,
          kTableBeamPositionCalculation},
         {1, 2},
         "a word that hosts know by its number"},
        {{kTableArrangeDirection, kTableSystemSource, kTableRequestType, kTablePointType,
          kTableDimGeomRestrictions},
         {1, 2, 3},
         "a word that hosts know by its number, with the picture for it"},
        {{kTableGeometricRestrictions}, {1, 2, 4}, "the same, with a tolerance that is on a page"},
        {{kTableBitmap, kTableBitmapIndex}, {1, 2, 3}, "the pictures that the program brings"},
        {{kTableClippingType},
         {1, 2, 3, 4, 5},
         "a way of clipping that the program knows, with its pictures"},
        {{kTableDetailMaster},
         {1, 2, 3, 4},
         "by which drawings find the style; the name follows the style's"},
        {{kTableBaseCategory}, {2}, "by which drawings find the styles of the category"},
        {{kTableLinetypes}, {1, 3}, "by which the file or the host knows the line type"},
    };
    return rows;
}

/// Empty for a column that is on a page.
inline std::string_view whyOnNoPage(eTableType table, const Column& column) {
    if (column.isReference() && column.role == eReferenceRole::kPartOf)
        return "a part stays with its whole";
    for (const ColumnsOnNoPage& row : columnsOnNoPage())
        if (std::ranges::find(row.tables, table) != row.tables.end() &&
            std::ranges::find(row.columns, column.number) != row.columns.end())
            return row.why;
    return {};
}
