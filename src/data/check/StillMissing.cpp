#include "data/check/StillMissing.h"

#include "base/Translation.h"
#include "records/DimensionRecords.h"

#include <algorithm>

namespace {

struct Need {
    eTableType table;
    const char* column;             // that must refer to something; null: there must be parts
    eTableType parts = kNoTable;    // of which one must exist
    const char* orColumn = nullptr; // that does as well
    /// Says of which rows it is needed; null: of all.
    bool (*isOf)(StyleSource& source, const StructRecord& record) = nullptr;
};

// From point to point; the other kinds are measured at each of the start points.
bool runsBetweenPoints(StyleSource& source, const StructRecord& record) {
    constexpr int kOrdinate = 1;
    const auto& request = static_cast<const StructDetViewDimRequestLinear&>(record);
    const auto* type = static_cast<const StructDetRequestType*>(
        source.table(kTableRequestType).find(KorOdbcKey(request.requestTypeKey)));
    return type && type->requestType <= kOrdinate;
}

constexpr Need kNeeds[] = {
    {kTableDetailStyle, "arrange_strategy"},
    {kTableDetailStyle, "object_selection_strategy"},
    {kTableDetailStyle, "view_1"},
    {kTableViewRequest, "system_and_box"},
    {kTableViewRequest, "repr_map"},
    {kTableSystemAndBox, "system_source"},
    {kTableReprMap, nullptr, kTableReprMapEntry},
    {kTableReprMapEntry, "qualifier_set"},
    {kTableReprMapEntry, "appearance"},
    {kTableAppearance, "visible_linetype"},
    {kTableViewDimStrategy, nullptr, kTableDimStrategyItem},
    {kTableDimStrategyItem, "dim_request"},
    {kTableDimRequest, "request_type"},
    {kTableDimRequest, "start_points"},
    {kTableDimRequest, "end_points", kNoTable, "inner_points", &runsBetweenPoints},
    {kTablePointSelection, "qualifier_set"},
    {kTablePointSelection, "point_type"},
    {kTableAnnotationStrategy, "annotation_type"},
    {kTableAnnotationStrategy, "arranger_control"},
    {kTableAnnotationStrategy, "contents"},
    {kTableQualifierSet, nullptr, kTableQualifierWithRole},
    {kTableQualifierWithRole, "qualifier"},
};

bool isChosen(const TableSchema& table, const Column& column, const StructRecord& record) {
    if (column.isText())
        return !std::get<KorString>(column.read(&record)).isEmpty();
    if (!column.isSlot())
        return column.integerIn(&record) > 0;
    return std::ranges::any_of(table.columns, [&](const Column& other) {
        return other.isSlot() && other.target == column.target && other.integerIn(&record) > 0;
    });
}

bool hasParts(StyleSource& source, RowRef row, eTableType parts) {
    const auto referrers = source.referrersOf(row.table, KorOdbcKey(row.key));
    return std::ranges::any_of(referrers, [parts](const Referrer& referrer) {
        return referrer.table->type == parts && referrer.column->role == eReferenceRole::kPartOf;
    });
}

} // namespace

std::vector<StillMissing> stillMissing(StyleSource& source, RowRef row) {
    std::vector<StillMissing> missing;
    const TableSchema* table = findTable(row.table);
    const StructRecord* record = table ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (!record)
        return missing;
    for (const Need& need : kNeeds) {
        if (need.table != row.table || (need.isOf && !need.isOf(source, *record)))
            continue;
        const Column* column = need.column ? table->column(std::string_view(need.column)) : nullptr;
        if (!column && !hasParts(source, row, need.parts))
            missing.push_back({findTable(need.parts), nullptr});
        else if (column && !isChosen(*table, *column, *record) &&
                 !(need.orColumn &&
                   isChosen(*table, *table->column(std::string_view(need.orColumn)), *record)))
            missing.push_back({table, column});
    }
    return missing;
}

std::string wordFor(const StillMissing& missing) {
    if (missing.column && !missing.column->isReference())
        return missing.table->columnName(*missing.column);
    return (missing.column ? findTable(missing.column->target) : missing.table)->rowName();
}

KorString wholeSentence(StyleSource& source, RowRef row) {
    const TableSchema& table = *findTable(row.table);
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    const auto part = std::ranges::find(table.columns, eReferenceRole::kPartOf, &Column::role);
    if (!record || part == table.columns.end() || !part->isReference())
        return {};
    const StructRecord* whole = source.table(part->target).find(KorOdbcKey(part->integerIn(record)));
    return whole ? KorString::format(translated("It is part of the %s \"%s\"."),
                                     {findTable(part->target)->rowName(), whole->name})
                 : KorString();
}
