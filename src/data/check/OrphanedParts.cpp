#include "data/check/OrphanedParts.h"

#include "base/Translation.h"

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

std::string whyNotCompactable(StyleSource& source) {
    std::string reason = source.complete().error;
    const auto lost = std::ranges::find(source.problems(), false, &ReadProblem::kept);
    if (reason.empty() && lost != source.problems().end())
        reason = lost->sentence;
    return reason.empty()
               ? reason
               : KorString::format(
                     translated("\"%s\" could not be read whole, so nothing was removed from it: %s"),
                     {source.store().name(), reason})
                     .toStdString();
}
