#include "records/TableSchema.h"

#include "base/Translation.h"

#include <algorithm>

namespace {

std::string withSeparator(std::string name, char separator) {
    std::ranges::replace(name, '_', separator);
    return name;
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
