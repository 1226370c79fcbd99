#include "drawing/NotShown.h"

#include "base/Translation.h"

#include <array>

std::span<const NotShownColumn> notShownColumns() {
    static constexpr std::array<NotShownColumn, 24> kColumns = {{
        {kTableHcadSettings, "color_by_layer", translatable("the host keeps the colours of layers")},
        {kTableViewRequest, "beam_position_calculation",
         translatable("only the host numbers the positions of beams")},
        {kTableBeamPositionCalculation, "calculation",
         translatable("only the host numbers the positions of beams")},
        {kTableSystemAndBox, "depth_position",
         translatable("the depth position of the view goes before that of its box")},
        {kTableAnnotationType, "object_type", translatable("it only says which variables are offered")},
        {kTableArrangerStrategy, "priority",
         translatable("it matters only where labels are in each other's way")},
        {kTablePointSelection, "geometric_restriction",
         translatable("restrictions within a tolerance are left to the host")},
        {kTableGeometricRestrictions, "restriction",
         translatable("restrictions within a tolerance are left to the host")},
        {kTableGeometricRestrictions, "tolerance",
         translatable("restrictions within a tolerance are left to the host")},
        {kTableQualifier, "order", translatable("it only says in which order qualifiers are offered")},
        {kTableViewRequestCategory, "view_request", translatable("it only files the view")},
        {kTableClippingType, "picture_1", translatable("pictures are for lists of the editor")},
        {kTableClippingType, "picture_2", translatable("pictures are for lists of the editor")},
        {kTableClippingType, "picture_3", translatable("pictures are for lists of the editor")},
        {kTableClippingType, "picture_4", translatable("pictures are for lists of the editor")},
        {kTableRequestType, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableArrangeDirection, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableSystemSource, "bitmap", translatable("pictures are for lists of the editor")},
        {kTablePointType, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableDimGeomRestrictions, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableGeometricRestrictions, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableBitmapIndex, "bitmap", translatable("pictures are for lists of the editor")},
        {kTableBitmap, "resource", translatable("pictures are for lists of the editor")},
        {kTableBitmapIndex, "position", translatable("pictures are for lists of the editor")},
    }};
    return kColumns;
}
