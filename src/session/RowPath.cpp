#include "session/RowPath.h"

#include "data/StyleDatabases.h"

namespace {

// The column by which rows of another table tell the host of rows of this one.
Referrer identifierOf(eTableType table) {
    for (const TableSchema& other : allTables())
        for (const Column& column : other.columns)
            if (column.isReference() && column.role == eReferenceRole::kIdentifies && column.target == table)
                return {&other, &column};
    return {};
}

eTableType nextTable(eTableType table, int step) {
    if (step == RowPaths::kIdentifier) {
        const Referrer identifier = identifierOf(table);
        return identifier.table ? identifier.table->type : kNoTable;
    }
    const TableSchema* schema = findTable(table);
    const Column* column = schema ? schema->column(step) : nullptr;
    return column && column->isReference() ? column->target : kNoTable;
}

std::int32_t nextKey(StyleSource& source, RowRef row, int step) {
    if (step != RowPaths::kIdentifier) {
        const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
        return record ? findTable(row.table)->column(step)->integerIn(record) : 0;
    }
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kIdentifies)
            return referrer.key;
    return 0;
}

} // namespace

eTableType RowPaths::tableAt(eTableType start, const RowPath& path) {
    for (const int step : path)
        start = nextTable(start, step);
    return start;
}

RowRef RowPaths::rowAt(RowRef row, const RowPath& path) {
    StyleSource* source = StyleDatabases::current().here();
    for (const int step : path) {
        const eTableType next = nextTable(row.table, step);
        row = {next, source && findTable(next) && row.key > 0 ? nextKey(*source, row, step) : 0};
    }
    const bool exists = source && findTable(row.table) && source->table(row.table).find(KorOdbcKey(row.key));
    return {row.table, exists ? row.key : 0};
}
