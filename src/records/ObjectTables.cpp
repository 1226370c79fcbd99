#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

namespace {

void declareRepresentation(std::vector<TableSchema>& tables) {
    using Map = StructDetObjReprMap;
    TableBuilder<Map>(tables, "repr_map")
        .shareable()
        .text(2, "description", &Map::description)
        .flag(3, "hide_unmatched", &Map::hideUnmatched);

    using Entry = StructDetObjReprMapKey;
    TableBuilder<Entry>(tables, "repr_map_entry")
        .partOf(2, "repr_map", &Entry::reprMapKey, kTableReprMap)
        .integer(3, "order", &Entry::order)
        .uses(4, "qualifier_set", &Entry::qualifierSetKey, kTableQualifierSet)
        .uses(5, "appearance", &Entry::appearanceKey, kTableAppearance)
        .uses(6, "annotation_strategy", &Entry::annotationStrategyKey, kTableAnnotationStrategy);

    using Appearance = StructDetObjAppearance;
    TableBuilder<Appearance>(tables, "appearance")
        .uses(2, "visible_status", &Appearance::visibleStatusKey, kTableVisibilityStatus)
        .uses(3, "visible_linetype", &Appearance::visibleLinetypeKey, kTableLinetypes)
        .color(4, "visible_color", &Appearance::visibleColor)
        .uses(5, "hidden_status", &Appearance::hiddenStatusKey, kTableVisibilityStatus)
        .uses(6, "hidden_linetype", &Appearance::hiddenLinetypeKey, kTableLinetypes)
        .color(7, "hidden_color", &Appearance::hiddenColor)
        .flag(8, "centre_lines", &Appearance::centreLines)
        .uses(9, "hatch", &Appearance::hatchKey, kTableHatchSettings)
        .length(10, "line_weight", &Appearance::lineWeight);

    using Hatch = StructDetHatchSettings;
    TableBuilder<Hatch>(tables, "hatch_settings")
        .text(2, "pattern", &Hatch::pattern)
        .real(3, "angle", &Hatch::angle)
        .length(4, "spacing", &Hatch::spacing)
        .color(5, "color", &Hatch::color);
}

void declareAnnotation(std::vector<TableSchema>& tables) {
    using Strategy = StructDetObjAnnotationStrategy;
    TableBuilder<Strategy>(tables, "annotation_strategy")
        .shareable()
        .filedUnder(2, "group", &Strategy::groupKey, kTableAnnotationGroup)
        .uses(3, "annotation_type", &Strategy::annotationTypeKey, kTableAnnotationType)
        .uses(4, "arranger_control", &Strategy::arrangerControlKey, kTableArrangerControl)
        .uses(5, "arranger_strategy", &Strategy::arrangerStrategyKey, kTableArrangerStrategy)
        .text(6, "contents", &Strategy::contents)
        .flag(7, "repeat_per_view", &Strategy::repeatPerView);

    using Type = StructDetAnnotationType;
    TableBuilder<Type>(tables, "annotation_type")
        .shareable()
        .choice(2, "annotation_kind", &Type::annotationKind,
                {"Text", "Part mark", "Weld symbol", "Bolt mark", "Level", "Hole mark"})
        .uses(3, "leader_style", &Type::leaderStyleKey, kTableLeaderStyle)
        .length(4, "text_size", &Type::textSize)
        .choice(5, "frame", &Type::frame, {"None", "Box", "Circle"})
        .integer(6, "object_type", &Type::objectTypeKey)
        .named(17, {"Part", "Assembly", "Weld", "Bolt or hole", "Level or grid line", "Cut view"});

    using Leader = StructDetLeaderStyle;
    TableBuilder<Leader>(tables, "leader_style")
        .integer(2, "arrow", &Leader::arrow)
        .named(0, {"None", "Filled arrow", "Open arrow", "Dot"})
        .length(3, "arrow_size", &Leader::arrowSize)
        .length(4, "landing", &Leader::landing);

    using Control = StructDetArrangerControl;
    TableBuilder<Control>(tables, "arranger_control")
        .shareable()
        .flag(2, "new_arranger", &Control::newArranger)
        .length(3, "distance", &Control::distance)
        .length(4, "max_leader_length", &Control::maxLeaderLength)
        .choice(5, "side_preference", &Control::sidePreference,
                {"Nearest", "Left", "Right", "Above", "Below"})
        .flag(6, "allow_overlap", &Control::allowOverlap);

    using Order = StructDetArrangerStrategy;
    TableBuilder<Order>(tables, "arranger_strategy")
        .shareable()
        .choice(2, "direction", &Order::direction, {"Both", "Horizontal", "Vertical"})
        .length(3, "spacing", &Order::spacing)
        .flag(4, "align_to_view", &Order::alignToView)
        .integer(5, "priority", &Order::priority);

    TableBuilder<StructDetObjAnnotationGroup>(tables, "annotation_group")
        .integer(2, "order", &StructDetObjAnnotationGroup::order);
}

void declareQualifiers(std::vector<TableSchema>& tables) {
    using Set = StructDetObjQualifierSet;
    TableBuilder<Set>(tables, "qualifier_set")
        .shareable()
        .filedUnder(2, "group", &Set::groupKey, kTableQualifierSetGroup)
        .choice(3, "combination", &Set::combination, {"All qualifiers", "Any qualifier"})
        .text(4, "description", &Set::description);

    TableBuilder<StructDetObjQualifierSetGroup>(tables, "qualifier_set_group")
        .integer(2, "order", &StructDetObjQualifierSetGroup::order);

    using WithRole = StructDetObjQualifierWithRole;
    TableBuilder<WithRole>(tables, "qualifier_with_role")
        .partOf(2, "qualifier_set", &WithRole::qualifierSetKey, kTableQualifierSet)
        .uses(3, "qualifier", &WithRole::qualifierKey, kTableQualifier)
        .uses(4, "model_role", &WithRole::modelRoleKey, kTableModelRole)
        .uses(5, "filter", &WithRole::filterKey, kTableQualifierFilter)
        .flag(6, "negate", &WithRole::negate);

    using Qualifier = StructDetObjQualifier;
    TableBuilder<Qualifier>(tables, "qualifier")
        .uses(2, "model_type", &Qualifier::modelTypeKey, kTableModelType)
        .text(3, "property", &Qualifier::property)
        .integer(4, "order", &Qualifier::order);

    using Filter = StructDetObjQualifierFilter;
    TableBuilder<Filter>(tables, "qualifier_filter")
        .text(2, "expression", &Filter::expression)
        .real(3, "minimum", &Filter::minimum)
        .real(4, "maximum", &Filter::maximum);

    TableBuilder<StructDetModelType>(tables, "model_type")
        .integer(2, "model_type", &StructDetModelType::modelType)
        .named(1, {"Profile", "Plate", "Bolt", "Weld", "Hole", "Assembly", "Grid line", "Level", "Anchor",
                   "Grating", "Cut", "Rail"});
    TableBuilder<StructModelRole>(tables, "model_role")
        .integer(2, "role", &StructModelRole::role)
        .named(0, {"Any role", "Main part", "Secondary part", "Fitting", "Neighbour", "Shop connection",
                   "Site connection"})
        .committedWith(kTableQualifierSet);
}

} // namespace

void declareObjectTables(std::vector<TableSchema>& tables) {
    declareRepresentation(tables);
    declareAnnotation(tables);
    declareQualifiers(tables);
}
