#include "drawing/Governed.h"

#include "data/StyleSource.h"
#include "drawing/Arrangement.h"
#include "records/ViewRecords.h"

#include <algorithm>

namespace {

std::uint64_t placeOf(const RowRef& row) {
    return static_cast<std::uint64_t>(row.table) << 32 | static_cast<std::uint32_t>(row.key);
}

// Whether provenance names the columns of this table itself: where it does not, nothing hangs on them.
bool tellsItself(const TableSchema& table, const Column& column) {
    constexpr eTableType kTold[] = {kTableDetailStyle,     kTableViewRequest,        kTableReprMapEntry,
                                    kTableReprMap,         kTableSystemAndBox,       kTableAppearance,
                                    kTableViewDimStrategy, kTableDimStrategyItem,    kTableDimRequest,
                                    kTableLengthClip,      kTableAnnotationStrategy, kTableAnnotationType,
                                    kTableArrangerControl, kTableArrangerStrategy,   kTableHatchSettings,
                                    kTableLeaderStyle,     kTableGridRefSettings};
    return std::ranges::find(kTold, table.type) != std::end(kTold) || column.name == "frame_margin";
}

void keepEachOnce(Governed::Places& places) {
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
}

RowRef rowAt(std::uint64_t place) {
    return {static_cast<eTableType>(place >> 32), static_cast<std::int32_t>(place)};
}

} // namespace

Governed::Governed(const Drawing& drawing) {
    std::unordered_map<const Provenance*, std::size_t> known;
    std::size_t place = 0;
    for (const Primitive* primitive : drawing.all()) {
        const Provenance* provenance = primitive->provenance.get();
        const auto [chain, isNew] = known.try_emplace(provenance, m_chains.size());
        if (isNew) {
            m_chains.emplace_back();
            if (provenance)
                for (const ProvenanceStep& step : *provenance)
                    m_steps[placeOf(step.row)].push_back({step.source, step.columns, chain->second});
        }
        m_chains[chain->second].places.push_back(place++);
        m_chains[chain->second].box.add(primitive->box());
    }
}

std::vector<const Governed::Chain*> Governed::chainsOf(SourceId source, const RowRef& row, int column) const {
    std::vector<const Chain*> chains;
    const auto found = m_steps.find(placeOf(row));
    if (found == m_steps.end())
        return chains;
    for (const Step& step : found->second)
        if (const Chain* chain = &m_chains[step.chain];
            step.source == source && (chains.empty() || chains.back() != chain) &&
            (column == 0 || std::ranges::find(step.columns, column) != step.columns.end()))
            chains.push_back(chain);
    return chains;
}

Governed::Places Governed::by(SourceId source, const RowRef& row, int column) const {
    Places places;
    for (const Chain* chain : chainsOf(source, row, column))
        places.insert(places.end(), chain->places.begin(), chain->places.end());
    std::ranges::sort(places);
    return places;
}

Box2 Governed::box(SourceId source, const RowRef& row, int column) const {
    Box2 box;
    for (const Chain* chain : chainsOf(source, row, column))
        box.add(chain->box);
    return box;
}

Governed::Places Governed::by(StyleSource& source, const RowRef& row, int number) const {
    Places places = by(source.id(), row, number);
    const TableSchema* table = findTable(row.table);
    const Column* column = table ? table->column(number) : nullptr;
    const StructRecord* record = table ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (!places.empty() || !column || !record || column->role == eReferenceRole::kFiledUnder ||
        column->number == 1)
        return places;
    if (column->isReference() && column->role == eReferenceRole::kPartOf) {
        places = by(source.id(), row);
    } else if (column->isSlot() || column->name == "dim_strategy") {
        const Places own = by(source.id(), row);
        const Places chosen = by(source.id(), {column->target, column->integerIn(record)});
        std::ranges::set_intersection(own, chosen, std::back_inserter(places));
    }
    std::set<RowRef> seen;
    if (places.empty() && !tellsItself(*table, *column))
        addThrough(source, row, seen, places);
    keepEachOnce(places);
    if (column->name == "projection")
        std::erase_if(places, [placed = placedByProjection(source)](std::size_t place) {
            return !std::ranges::binary_search(placed, place);
        });
    return places;
}

// What belongs to views that name no side of the main view themselves.
Governed::Places Governed::placedByProjection(StyleSource& source) const {
    Places places;
    for (const auto& [id, steps] : m_steps) {
        const RowRef row = rowAt(id);
        if (row.table != kTableViewRequest)
            continue;
        const auto* view = static_cast<const StructDetViewRequest*>(
            source.table(kTableViewRequest).find(KorOdbcKey(row.key)));
        const auto* direction =
            view ? static_cast<const StructDetViewArrangeDirection*>(
                       source.table(kTableArrangeDirection).find(KorOdbcKey(view->arrangeDirectionKey)))
                 : nullptr;
        if (!direction || isPlacedByProjection(direction->direction)) {
            const Places own = by(source.id(), row);
            places.insert(places.end(), own.begin(), own.end());
        }
    }
    keepEachOnce(places);
    return places;
}

// What is governed by the cells that refer to a row, or to the row that it is a part of.
void Governed::addThrough(StyleSource& source, const RowRef& row, std::set<RowRef>& seen,
                          Places& places) const {
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    if (!record || !seen.insert(row).second)
        return;
    for (const Column& column : findTable(row.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kPartOf)
            addThrough(source, {column.target, column.integerIn(record)}, seen, places);
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key))) {
        if (referrer.column->role != eReferenceRole::kUses)
            continue;
        const RowRef user = {referrer.table->type, referrer.key};
        const Places own = by(source.id(), user, referrer.column->number);
        places.insert(places.end(), own.begin(), own.end());
        if (!tellsItself(*referrer.table, *referrer.column))
            addThrough(source, user, seen, places);
    }
}
