#include "data/text/TableRows.h"

TableRows::TableRows() {
    for (const TableSchema& table : allTables())
        m_rows[static_cast<std::size_t>(table.type)] = table.makeRows();
}

StoreResult TableRows::readFrom(StyleStore& store, std::vector<ReadProblem>& problems) {
    for (const TableSchema& table : allTables()) {
        of(table.type).clear();
        if (const StoreResult result = store.readTable(table, of(table.type), problems); !result)
            return result;
    }
    return {};
}

StoreResult TableRows::appendTo(StyleStore& store) const {
    for (const TableSchema& table : allTables()) {
        const RowArray& rows = of(table.type);
        TableChange change;
        change.table = &table;
        for (int i = 0; i < rows.size(); ++i)
            change.appended.push_back(&rows.at(i));
        std::vector<StoreConflict> conflicts;
        if (const StoreResult result = store.apply(change, conflicts); !result)
            return result;
        if (!conflicts.empty())
            return StoreResult::failure("The " + table.rowName() + " with the key " +
                                        std::to_string(conflicts.front().key) + " is already in \"" +
                                        store.name() + "\"; choose an empty database.");
    }
    return {};
}
