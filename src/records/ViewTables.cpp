#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

namespace {

constexpr const char* kDefault = "Default";

void declareViewRequests(std::vector<TableSchema>& tables) {
    using View = StructDetViewRequest;
    TableBuilder<View>(tables, "view_request")
        .shareable()
        .uses(2, "system_and_box", &View::systemAndBoxKey, kTableSystemAndBox)
        .uses(3, "repr_map", &View::reprMapKey, kTableReprMap)
        .uses(4, "depth_position", &View::depthPositionKey, kTableDepthPosition)
        .uses(5, "select_mode", &View::selectModeKey, kTableViewSelectMode)
        .uses(6, "dim_strategy", &View::dimStrategyKey, kTableViewDimStrategy)
        .uses(7, "visibility_status", &View::visibilityStatusKey, kTableVisibilityStatus)
        .uses(8, "area_type", &View::areaTypeKey, kTableAreaType)
        .uses(9, "length_clip", &View::lengthClipKey, kTableLengthClip)
        .scale(10, "scale", &View::scale)
        .uses(11, "arrange_direction", &View::arrangeDirectionKey, kTableArrangeDirection)
        .choice(12, "compass", &View::compassKey,
                {"None", "Arrow, upper left", "Arrow, lower left", "Arrow, lower right", "Arrow, upper right",
                 "Symbol, upper left", "Symbol, lower left", "Symbol, lower right", "Symbol, upper right"})
        .choice(13, "compass_in_overviews", &View::compassInOverviews,
                {"Top left", "Top right", "Bottom left", "Bottom right"})
        .uses(14, "process_scale_override", &View::processScaleOverrideKey, kTableProcessScaleOverride)
        .uses(15, "beam_position_calculation", &View::beamPositionCalculationKey,
              kTableBeamPositionCalculation)
        .flag(16, "used_for_cuts_and_callouts", &View::usedForCutsAndCallouts)
        .text(17, "callout_title_template", &View::calloutTitleTemplate);

    using Filing = StructDetViewRequestCategory;
    TableBuilder<Filing>(tables, "view_request_category")
        .partOf(2, "view_request", &Filing::viewRequestKey, kTableViewRequest)
        .filedUnder(3, "category", &Filing::categoryKey, kTableBaseCategory);

    using Box = StructDetViewSystemAndBox;
    TableBuilder<Box>(tables, "system_and_box")
        .shareable()
        .uses(2, "system_source", &Box::systemSourceKey, kTableSystemSource)
        .uses(3, "orientation", &Box::orientationKey, kTableOrientation)
        .uses(4, "reference_axis", &Box::referenceAxisKey, kTableReferenceAxis)
        .uses(5, "depth_position", &Box::depthPositionKey, kTableDepthPosition)
        .length(6, "box_front_depth", &Box::boxFrontDepth)
        .length(7, "box_back_depth", &Box::boxBackDepth)
        .length(8, "box_margin", &Box::boxMargin)
        .real(9, "rotation", &Box::rotation)
        .flag(10, "mirrored", &Box::mirrored);
}

void declareClipping(std::vector<TableSchema>& tables) {
    using Clip = StructDetViewLengthClip;
    TableBuilder<Clip>(tables, "length_clip")
        .shareable()
        .flag(2, "along_x", &Clip::alongX)
        .flag(3, "along_y", &Clip::alongY)
        .length(4, "keep_each_side", &Clip::keepEachSide)
        .length(5, "interval", &Clip::interval, 1.0)
        .length(6, "extension", &Clip::extension, -1.0)
        .meaning(-1, kDefault)
        .uses(7, "clipping_type", &Clip::clippingTypeKey, kTableClippingType)
        .meaning(-1, kDefault)
        .uses(8, "linetype", &Clip::linetypeKey, kTableLinetypes)
        .meaning(-1, kDefault)
        .flag(9, "clip_oblique_lines", &Clip::clipObliqueLines)
        .length(10, "gap", &Clip::gap, -1.0)
        .meaning(-1, kDefault);

    TableBuilder<StructClippingGap>(tables, "clipping_gap")
        .length(2, "gap", &StructClippingGap::gap, -1.0)
        .meaning(-1, kDefault);

    using Type = StructClippingType;
    TableBuilder<Type>(tables, "clipping_type")
        .integer(2, "picture_1", &Type::picture1)
        .integer(3, "picture_2", &Type::picture2)
        .integer(4, "picture_3", &Type::picture3)
        .integer(5, "picture_4", &Type::picture4);

    TableBuilder<StructLinetypes>(tables, "linetype")
        .text(2, "file_path", &StructLinetypes::filePath)
        .integer(3, "linetype_id", &StructLinetypes::lineTypeId)
        .meaning(0, "From a file");
}

void declareViewVocabulary(std::vector<TableSchema>& tables) {
    TableBuilder<StructDetViewSelectMode>(tables, "select_mode")
        .integer(2, "mode", &StructDetViewSelectMode::mode);
    TableBuilder<StructDetViewArrangeDirection>(tables, "arrange_direction")
        .integer(2, "direction", &StructDetViewArrangeDirection::direction)
        .uses(3, "bitmap", &StructDetViewArrangeDirection::bitmapKey, kTableBitmap);
    TableBuilder<StructDetViewSystemSource>(tables, "system_source")
        .integer(2, "source", &StructDetViewSystemSource::source)
        .uses(3, "bitmap", &StructDetViewSystemSource::bitmapKey, kTableBitmap);
    TableBuilder<StructDetailProcessScaleOverride>(tables, "process_scale_override")
        .integer(2, "mode", &StructDetailProcessScaleOverride::mode)
        .real(3, "factor", &StructDetailProcessScaleOverride::factor);
    TableBuilder<StructDetailAreaType>(tables, "area_type")
        .integer(2, "area_type", &StructDetailAreaType::areaType)
        .committedWith(kTableViewRequest);
    TableBuilder<StructDetailDepthPosition>(tables, "depth_position")
        .integer(2, "position", &StructDetailDepthPosition::position)
        .length(3, "distance", &StructDetailDepthPosition::distance,
                -1e8) // in front of the plane or behind it
        .committedWith(kTableViewRequest);
    TableBuilder<StructDetailOrientation>(tables, "orientation")
        .integer(2, "orientation", &StructDetailOrientation::orientation)
        .real(3, "angle", &StructDetailOrientation::angle)
        .committedWith(kTableSystemAndBox);
    TableBuilder<StructDetailReferenceAxis>(tables, "reference_axis")
        .integer(2, "axis", &StructDetailReferenceAxis::axis)
        .committedWith(kTableSystemAndBox);
    TableBuilder<StructDetailVisibilityStatus>(tables, "visibility_status")
        .choice(2, "status", &StructDetailVisibilityStatus::status, {"Not drawn", "Visible", "Hidden lines"})
        .committedWith(kTableViewRequest);
    TableBuilder<StructBeamPositionCalculation>(tables, "beam_position_calculation")
        .integer(2, "calculation", &StructBeamPositionCalculation::calculation)
        .committedWith(kTableViewRequest);
    TableBuilder<StructDetObjectPosition>(tables, "object_position")
        .integer(2, "position", &StructDetObjectPosition::position)
        .committedWith(kTableViewRequest);
}

} // namespace

void declareViewTables(std::vector<TableSchema>& tables) {
    declareViewRequests(tables);
    declareClipping(tables);
    declareViewVocabulary(tables);
}
