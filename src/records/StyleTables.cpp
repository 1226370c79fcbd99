#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

void declareStyleTables(std::vector<TableSchema>& tables) {
    using Style = StructDetailStyle;
    TableBuilder<Style>(tables, "detail_style")
        .uses(2, "arrange_strategy", &Style::arrangeStrategyKey, kTableViewArrangeStrategy)
        .text(3, "description", &Style::description)
        .uses(4, "object_selection_strategy", &Style::objectSelectionStrategy, kTableSelectionStrategy)
        .text(5, "title_format", &Style::titleFormat)
        .choice(6, "title_position", &Style::titlePosition,
                {"No title", "Lower left", "Above detail", "Above main view", "Below detail", "Lower right",
                 "Upper left", "Upper right"})
        .text(7, "cut_view_title_format", &Style::cutViewTitleFormat)
        .choice(8, "cut_view_title_position", &Style::cutViewTitlePosition,
                {"Below cut view", "Above cut view"})
        .flag(9, "automatic_clipping", &Style::automaticClipping)
        .uses(10, "grid_reference_settings", &Style::gridRefSettingsKey, kTableGridRefSettings)
        .uses(11, "drawing_settings", &Style::hcadSettingsKey, kTableHcadSettings)
        .slots(12, "view", &Style::viewRequests, kTableViewRequest);

    using Master = StructDetailMaster;
    TableBuilder<Master>(tables, "detail_master")
        .integer(2, "detail_key", &Master::detailKey)
        .integer(3, "number", &Master::number)
        .identifies(4, "style", &Master::styleKey, kTableDetailStyle)
        .filedUnder(5, "category", &Master::categoryKey, kTableBaseCategory);

    using Category = StructDetBaseCategory;
    TableBuilder<Category>(tables, "base_category")
        .integer(2, "number", &Category::number)
        .uses(3, "bitmap", &Category::bitmapKey, kTableBitmap);

    using Arrange = StructDetViewArrangeStrategy;
    TableBuilder<Arrange>(tables, "view_arrange_strategy")
        .shareable()
        .choice(2, "projection", &Arrange::projection, {"First angle", "Third angle"})
        .length(3, "row_spacing", &Arrange::rowSpacing)
        .length(4, "column_spacing", &Arrange::columnSpacing)
        .length(5, "frame_margin", &Arrange::frameMargin)
        .flag(6, "align_views", &Arrange::alignViews)
        .flag(7, "stack_sections", &Arrange::stackSections);

    using Selection = StructDetObjSelectionStrategy;
    TableBuilder<Selection>(tables, "selection_strategy")
        .choice(2, "drawing_kind", &Selection::drawingKind, {"Overview", "Single part", "Assembly"})
        .flag(3, "include_accessories", &Selection::includeAccessories)
        .flag(4, "include_welds", &Selection::includeWelds)
        .length(5, "neighbour_distance", &Selection::neighbourDistance);

    using Grid = StructDetGridRefSettings;
    TableBuilder<Grid>(tables, "grid_reference_settings")
        .flag(2, "show_grid", &Grid::showGrid)
        .length(3, "bubble_diameter", &Grid::bubbleDiameter)
        .length(4, "overhang", &Grid::overhang)
        .uses(5, "linetype", &Grid::linetypeKey, kTableLinetypes);

    using Drawing = StructDetHcadSettings;
    TableBuilder<Drawing>(tables, "drawing_settings")
        .text(2, "layer", &Drawing::layer)
        .flag(3, "color_by_layer", &Drawing::colorByLayer)
        .text(4, "text_font", &Drawing::textFont)
        .real(5, "line_scale", &Drawing::lineScale);
}
