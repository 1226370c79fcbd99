#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

namespace {

void declareRequests(std::vector<TableSchema>& tables) {
    using Strategy = StructDetViewDimStrategy;
    TableBuilder<Strategy>(tables, "view_dim_strategy")
        .shareable()
        .text(2, "description", &Strategy::description)
        .length(3, "first_line_distance", &Strategy::firstLineDistance)
        .length(4, "line_spacing", &Strategy::lineSpacing)
        .flag(5, "merge_equal", &Strategy::mergeEqual);

    using Item = StructDetViewDimStrategyItem;
    TableBuilder<Item>(tables, "dim_strategy_item")
        .partOf(2, "strategy", &Item::strategyKey, kTableViewDimStrategy)
        .integer(3, "order", &Item::order)
        .uses(4, "dim_request", &Item::dimRequestKey, kTableDimRequest);

    using Request = StructDetViewDimRequestLinear;
    TableBuilder<Request>(tables, "dim_request")
        .shareable()
        .filedUnder(2, "group", &Request::groupKey, kTableDimRequestGroup)
        .uses(3, "request_type", &Request::requestTypeKey, kTableRequestType)
        .uses(4, "direction", &Request::directionKey, kTableLinearDirection)
        .uses(5, "ordinate_type", &Request::ordinateTypeKey, kTableOrdinateDimType)
        .uses(6, "ordinate_position", &Request::ordinatePositionKey, kTableOrdinatePosition)
        .uses(7, "ordinate_reference", &Request::ordinateReferenceKey, kTableOrdinateReference)
        .text(8, "title_format", &Request::titleFormat)
        .integer(9, "title_position", &Request::titlePosition)
        .named(0, {"Above the line", "Below the line", "Before the line", "Behind the line"})
        .length(10, "minimum_length", &Request::minimumLength)
        .flag(11, "chained", &Request::chained)
        .uses(12, "start_points", &Request::startPointsKey, kTablePointSelection)
        .uses(13, "inner_points", &Request::innerPointsKey, kTablePointSelection)
        .uses(14, "end_points", &Request::endPointsKey, kTablePointSelection);

    TableBuilder<StructDetViewDimRequestLinearGroup>(tables, "dim_request_group")
        .integer(2, "order", &StructDetViewDimRequestLinearGroup::order);
}

void declarePoints(std::vector<TableSchema>& tables) {
    using Points = StructDetViewDimPointSelection;
    TableBuilder<Points>(tables, "point_selection")
        .shareable()
        .uses(2, "qualifier_set", &Points::qualifierSetKey, kTableQualifierSet)
        .uses(3, "point_type", &Points::pointTypeKey, kTablePointType)
        .uses(4, "geom_restrictions", &Points::geomRestrictionsKey, kTableDimGeomRestrictions)
        .uses(5, "parent_position", &Points::parentRelaPosKey, kTableParentRelaPos)
        .uses(6, "geometric_restriction", &Points::geometricRestrictionKey, kTableGeometricRestrictions)
        .integer(7, "maximum_count", &Points::maximumCount, 0, 1000)
        .meaning(0, "All")
        .flag(8, "include_hidden", &Points::includeHidden);

    TableBuilder<StructDetViewDimPointtype>(tables, "point_type")
        .integer(2, "point_type", &StructDetViewDimPointtype::pointType)
        .uses(3, "bitmap", &StructDetViewDimPointtype::bitmapKey, kTableBitmap);
    TableBuilder<StructDetVwDimGeomRestrictions>(tables, "dim_geom_restrictions")
        .integer(2, "restriction", &StructDetVwDimGeomRestrictions::restriction)
        .uses(3, "bitmap", &StructDetVwDimGeomRestrictions::bitmapKey, kTableBitmap);
    TableBuilder<StructDetVwDimParentRelaPosRestriction>(tables, "parent_position")
        .integer(2, "position", &StructDetVwDimParentRelaPosRestriction::position);
    TableBuilder<StructDetGeometricRestrictions>(tables, "geometric_restriction")
        .integer(2, "restriction", &StructDetGeometricRestrictions::restriction)
        .length(3, "tolerance", &StructDetGeometricRestrictions::tolerance)
        .uses(4, "bitmap", &StructDetGeometricRestrictions::bitmapKey, kTableBitmap);
}

void declareDimensionVocabulary(std::vector<TableSchema>& tables) {
    TableBuilder<StructDetRequestType>(tables, "request_type")
        .integer(2, "request_type", &StructDetRequestType::requestType)
        .named(0, {"Linear", "Ordinate", "Radial", "Angular", "Level"})
        .uses(3, "bitmap", &StructDetRequestType::bitmapKey, kTableBitmap);
    TableBuilder<StructDetRequestLinearDirection>(tables, "linear_direction")
        .integer(2, "direction", &StructDetRequestLinearDirection::direction)
        .named(0, {"Horizontal", "Vertical", "Along the part", "Across the part"})
        .real(3, "angle", &StructDetRequestLinearDirection::angle);
    TableBuilder<StructDetOrdinateDimType>(tables, "ordinate_type")
        .integer(2, "ordinate_type", &StructDetOrdinateDimType::ordinateType);
    TableBuilder<StructDetOrdinatePosition>(tables, "ordinate_position")
        .integer(2, "position", &StructDetOrdinatePosition::position);
    TableBuilder<StructDetOrdinateReference>(tables, "ordinate_reference")
        .integer(2, "reference", &StructDetOrdinateReference::reference);
}

} // namespace

void declareDimensionTables(std::vector<TableSchema>& tables) {
    declareRequests(tables);
    declarePoints(tables);
    declareDimensionVocabulary(tables);
}
