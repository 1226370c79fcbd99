#include "operations/CurrentRows.h"

#include "data/StyleDatabases.h"
#include "operations/KorDetStructureUtilities.h"
#include "records/OwnWords.h"

#include <algorithm>

namespace {

StyleTable* openTable(eTableType type) {
    StyleSource* source = findTable(type) ? StyleDatabases::current().here() : nullptr;
    return source ? &source->table(type) : nullptr;
}

} // namespace

SourceId CurrentRows::source() {
    return StyleDatabases::current().currentSource();
}

const StructRecord* CurrentRows::find(eTableType type, const KorOdbcKey& key) {
    StyleTable* table = openTable(type);
    return table ? table->find(key) : nullptr;
}

const StructRecord* CurrentRows::find(eTableType type, const KorString& runName) {
    StyleTable* table = openTable(type);
    return table ? table->find(runName) : nullptr;
}

const RowArray* CurrentRows::all(eTableType type) {
    StyleTable* table = openTable(type);
    return table ? &table->rows() : nullptr;
}

std::vector<const StructRecord*> CurrentRows::byName(eTableType type) {
    std::vector<const StructRecord*> rows;
    const RowArray* table = all(type);
    for (int i = 0; table && i < table->size(); ++i)
        rows.push_back(&table->at(i));
    if (OwnWords::areIn(type)) // in the language in which they are shown
        std::ranges::stable_sort(rows, KorDetStructureUtilities::isNameBefore,
                                 [type](const StructRecord* row) { return OwnWords::nameOf(type, *row); });
    else
        std::ranges::stable_sort(rows, KorDetStructureUtilities::isNameBefore, &StructRecord::name);
    return rows;
}

std::vector<Referrer> CurrentRows::partsOf(eTableType type, const KorOdbcKey& key) {
    StyleSource* source = StyleDatabases::current().here();
    std::vector<Referrer> parts;
    if (source)
        parts = source->referrersOf(type, key);
    std::erase_if(parts, [](const Referrer& each) { return each.column->role != eReferenceRole::kPartOf; });
    return parts;
}
