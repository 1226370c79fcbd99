#include "drawing/NotShown.h"

#include "base/Translation.h"

#include <array>

std::span<const NotShownColumn> notShownColumns() {
    static constexpr std::array<NotShownColumn, 6> kColumns = {{
        {kTableHcadSettings, "color_by_layer", translatable("the host keeps the colours of layers")},
        {kTableViewRequest, "beam_position_calculation",
         translatable("only the host numbers the positions of beams")},
        {kTableBeamPositionCalculation, "calculation",
         translatable("only the host numbers the positions of beams")},
        {kTableSystemAndBox, "depth_position",
         translatable("the depth position of the view goes before that of its box")},
        {kTableAnnotationType, "object_type", translatable("it only says which variables are offered")},
        {kTableQualifier, "order", translatable("it only says in which order qualifiers are offered")},
    }};
    return kColumns;
}

const char* whyForListsAlone(const TableSchema& table, const Column& column) {
    if (column.number == 1 || column.name == "description" || column.role == eReferenceRole::kFiledUnder ||
        table.type == kTableViewRequestCategory)
        return translatable("Names, descriptions and groups are in no drawing.");
    if (column.name == "bitmap" || column.name.starts_with("picture_") || table.type == kTableBitmap ||
        table.type == kTableBitmapIndex)
        return translatable("Pictures are for lists of the editor.");
    return nullptr;
}
