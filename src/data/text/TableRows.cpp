#include "data/text/TableRows.h"

#include "base/Translation.h"

TableRows::TableRows() {
    for (const TableSchema& table : allTables())
        m_rows[static_cast<std::size_t>(table.type)] = table.makeRows();
}

Result<> TableRows::appendTo(StyleStore& store) const {
    for (const TableSchema& table : allTables()) {
        const RowArray& rows = of(table.type);
        TableChange change;
        change.table = &table;
        for (int i = 0; i < rows.size(); ++i)
            change.appended.push_back(&rows.at(i));
        std::vector<StoreConflict> conflicts;
        if (Result<> result = store.apply(change, conflicts); !result)
            return result;
        if (!conflicts.empty())
            return Result<>::failure(KorString::format(
                translated("The %s with the key %s is already in \"%s\"; choose an empty database."),
                {table.rowName(), KorString::number(conflicts.front().key), store.name()}));
    }
    return {};
}
