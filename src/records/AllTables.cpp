#include "records/TableDeclarations.h"

#include <algorithm>
#include <array>

namespace {

std::vector<TableSchema> declareAll() {
    std::vector<TableSchema> tables;
    declareStyleTables(tables);
    declareViewTables(tables);
    declareObjectTables(tables);
    declareDimensionTables(tables);
    declareCatalogueTables(tables);
    std::ranges::sort(tables, {}, &TableSchema::type);
    return tables;
}

} // namespace

const std::vector<TableSchema>& allTables() {
    static const std::vector<TableSchema> tables = declareAll();
    return tables;
}

const TableSchema* findTable(eTableType type) {
    static const auto byType = [] {
        std::array<const TableSchema*, kEndOfTables> tables{};
        for (const TableSchema& table : allTables())
            tables[static_cast<std::size_t>(table.type)] = &table;
        return tables;
    }();
    return type >= 0 && type < kEndOfTables ? byType[static_cast<std::size_t>(type)] : nullptr;
}

const TableSchema* findTable(std::string_view name) {
    const std::string sqlName = [&] {
        std::string text(name);
        std::ranges::replace(text, '-', '_');
        return text;
    }();
    const auto it = std::ranges::find(allTables(), sqlName, &TableSchema::name);
    return it == allTables().end() ? nullptr : &*it;
}
