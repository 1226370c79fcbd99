#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

// Catalogues have no table type of their own in the commit walk: they follow the last one.
void declareCatalogueTables(std::vector<TableSchema>& tables) {
    TableBuilder<StructBitmap>(tables, "bitmap")
        .integer(2, "resource", &StructBitmap::resource)
        .committedWith(kTableModelType);
    TableBuilder<StructBitmapIndex>(tables, "bitmap_index")
        .partOf(2, "bitmap", &StructBitmapIndex::bitmapKey, kTableBitmap)
        .integer(3, "position", &StructBitmapIndex::index)
        .committedWith(kTableModelType);
    TableBuilder<StructTextSize>(tables, "text_size")
        .length(2, "size", &StructTextSize::size)
        .committedWith(kTableModelType);
    TableBuilder<StructScaleGroup>(tables, "scale_group")
        .integer(2, "unit_type", &StructScaleGroup::unitType, 1, 2)
        .named(1, {"Metric", "Imperial"})
        .committedWith(kTableModelType);
    TableBuilder<StructScale>(tables, "scale")
        .real(2, "factor", &StructScale::factor)
        .integer(3, "unit_type", &StructScale::unitType, 1, 2)
        .named(1, {"Metric", "Imperial"})
        .filedUnder(4, "group", &StructScale::groupKey, kTableScaleGroup)
        .committedWith(kTableModelType);
    TableBuilder<StructNumericDefault>(tables, "numeric_default")
        .real(2, "value", &StructNumericDefault::value)
        .committedWith(kTableModelType);
    TableBuilder<StructCreationDefault>(tables, "creation_default")
        .integer(2, "family", &StructCreationDefault::family)
        .text(3, "value", &StructCreationDefault::value)
        .committedWith(kTableModelType);
}
