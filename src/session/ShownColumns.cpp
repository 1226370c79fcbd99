#include "session/ShownColumns.h"

#include "data/StyleDatabases.h"

#include <algorithm>

const Column* wholeColumn(const TableSchema& part, eTableType whole) {
    for (const Column& column : part.columns)
        if (column.isReference() && column.role == eReferenceRole::kPartOf && column.target == whole)
            return &column;
    return nullptr;
}

namespace {

bool isRowPending(const TableChange& change, std::int32_t key, const std::vector<int>& columns) {
    return std::ranges::any_of(change.cells,
                               [&](const CellChange& cell) {
                                   return cell.key == key &&
                                          std::ranges::find(columns, cell.column->number) != columns.end();
                               }) ||
           std::ranges::any_of(change.appended, [key](const StructRecord* row) { return row->key == key; });
}

bool isPartPending(const TableChange& change, StyleTable& parts, const Column& whole, std::int32_t key) {
    const auto isPart = [&](const StructRecord* row) { return row && whole.integerIn(row) == key; };
    return std::ranges::any_of(change.appended, isPart) || std::ranges::any_of(change.deleted, isPart) ||
           std::ranges::any_of(change.cells, [&](const CellChange& cell) {
               return isPart(parts.find(KorOdbcKey(cell.key)));
           });
}

} // namespace

bool ShownColumns::isPending() const {
    StyleDatabases& databases = StyleDatabases::current();
    StyleSource* source = databases.here();
    if (!source)
        return false;
    PendingLog& log = databases.pending();
    if (log.hasPending(source->id(), table) &&
        isRowPending(log.netChange(source->id(), table), key.getKey(), columns))
        return true;
    return std::ranges::any_of(parts, [&](eTableType part) {
        const Column* whole =
            log.hasPending(source->id(), part) ? wholeColumn(*findTable(part), table) : nullptr;
        return whole &&
               isPartPending(log.netChange(source->id(), part), source->table(part), *whole, key.getKey());
    });
}

std::vector<eTableType> partTablesOf(eTableType table) {
    std::vector<eTableType> parts;
    for (const TableSchema& candidate : allTables())
        if (wholeColumn(candidate, table))
            parts.push_back(candidate.type);
    return parts;
}
