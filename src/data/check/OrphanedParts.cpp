#include "data/check/OrphanedParts.h"

#include <algorithm>

std::vector<RowRef> orphanedParts(StyleSource& source) {
    std::vector<RowRef> orphans;
    for (const TableSchema& table : allTables()) {
        const RowArray& rows = source.table(table.type).rows();
        for (int i = 0; i < rows.size(); ++i) {
            const StructRecord& row = rows.at(i);
            if (std::ranges::any_of(table.columns, [&](const Column& column) {
                    return column.isReference() && column.role == eReferenceRole::kPartOf &&
                           !source.table(column.target).find(KorOdbcKey(column.integerIn(&row)));
                }))
                orphans.push_back({table.type, row.key});
        }
    }
    return orphans;
}
