#include "records/TableSchema.h"

#include "base/Translation.h"
#include "records/TableDeclarations.h"

#include <algorithm>
#include <array>

namespace {

std::string withSeparator(std::string name, char separator) {
    std::ranges::replace(name, '_', separator);
    return name;
}

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

std::string TableSchema::kindName() const {
    return withSeparator(name, '-');
}

std::string TableSchema::rowName() const {
    return term("TAB", type, withSeparator(name, ' ')).toStdString();
}

std::string TableSchema::columnName(const Column& column) const {
    return term("COL", type * 100 + column.number, column.name).toStdString();
}

const Column* TableSchema::column(int number) const {
    const auto it = std::ranges::lower_bound(columns, number, {}, &Column::number);
    return it != columns.end() && it->number == number ? &*it : nullptr;
}

const Column* TableSchema::column(std::string_view columnName) const {
    const auto it = std::ranges::find(columns, columnName, &Column::name);
    return it == columns.end() ? nullptr : &*it;
}

int TableSchema::firstSlot() const {
    const auto slot = std::ranges::find_if(columns, &Column::isSlot);
    return slot != columns.end() ? slot->number : columns.empty() ? 1 : columns.back().number + 1;
}

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
