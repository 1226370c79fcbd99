#include "data/store/TableLayout.h"

#include "data/store/ReadReport.h"
#include "data/store/StoreFault.h"

#include <algorithm>

namespace {

std::string joined(const TableSchema& table, std::span<const CellChange* const> cells,
                   CellValue CellChange::*member) {
    std::string text;
    for (const CellChange* cell : cells)
        text +=
            (text.empty() ? "" : "; ") + table.columnName(*cell->column) + " = " + displayText(cell->*member);
    return text;
}

} // namespace

Result<> refuseMissing(const TableChange& change, const TableLayout& layout, const std::string& database) {
    if (!layout.hasTable && !change.isEmpty())
        return faultResult(eStoreFault::kNoTable, database, change.table->name);
    const auto defaults = change.table->makeRows()->copyOf(nullptr);
    for (const Column* column : layout.missing) {
        const bool changed =
            std::ranges::find(change.cells, column, &CellChange::column) != change.cells.end();
        const bool appended = std::ranges::any_of(change.appended, [&](const StructRecord* record) {
            return column->read(record) != column->read(defaults.get());
        });
        if (changed || appended)
            return faultResult(eStoreFault::kNoColumn, database, change.table->name + "." + column->name);
    }
    return {};
}

StoreConflict goneRow(const TableSchema& table, std::span<const CellChange* const> cells) {
    return {&table,
            cells.front()->key,
            nullptr,
            "",
            joined(table, cells, &CellChange::wanted),
            joined(table, cells, &CellChange::stored)};
}

std::vector<const CellChange*> sortedCells(const TableChange& change) {
    std::vector<const CellChange*> cells;
    cells.reserve(change.cells.size());
    for (const CellChange& cell : change.cells)
        cells.push_back(&cell);
    const auto place = [](const CellChange* cell) { return std::pair(cell->key, cell->column->number); };
    if (!std::ranges::is_sorted(cells, {}, place))
        std::ranges::sort(cells, {}, place);
    return cells;
}
