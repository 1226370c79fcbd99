#include "session/ShadowedEntries.h"

#include "base/Translation.h"
#include "drawing/Shadowing.h"

std::vector<Finding> shadowedEntries(StyleSource& source) {
    std::vector<Finding> findings;
    const TableSchema& table = *findTable(kTableReprMapEntry);
    const StyleTable& entries = source.table(table.type);
    const RowArray& maps = source.table(kTableReprMap).rows();
    for (int i = 0; i < maps.size(); ++i)
        for (const ShadowedEntry& shadowed : Shadowing::of(source, maps.at(i).key)) {
            const KorString name = entries.find(KorOdbcKey(shadowed.entry))->name;
            const KorString sentence = KorString::format(
                translated(
                    "The %s \"%s\" (key %s) of \"%s\" never acts, because \"%s\" comes before it in the "
                    "same map and takes all that it could; move it before that one, or delete it."),
                {table.rowName(), name, KorString::number(shadowed.entry), source.store().name(),
                 entries.find(KorOdbcKey(shadowed.by))->name});
            if (!shadowed.isSameSet)
                findings.push_back({eSeverity::kNote, &table, shadowed.entry, name,
                                    table.column("qualifier_set"), sentence.toStdString()});
        }
    return findings;
}
