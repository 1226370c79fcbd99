#include "operations/StyleReadOperations.h"

#include "data/StyleDatabases.h"
namespace {

// The parts in the order of their key, which is the order in which they were appended; where they carry an
// order of their own, by that.
template <typename R>
int partsOf(KorArray<R>& parts, eTableType whole, const KorOdbcKey& key) {
    parts.clear();
    StyleSource* source = StyleDatabases::current().here();
    if (!source)
        return 0;
    for (const Referrer& part : source->referrersOf(whole, key))
        if (part.table->type == tableOf<R> && part.column->role == eReferenceRole::kPartOf)
            parts.append(static_cast<const R&>(*source->table(tableOf<R>).find(KorOdbcKey(part.key))));
    if constexpr (requires(R record) { record.order; })
        std::ranges::stable_sort(parts, {}, &R::order);
    return parts.length();
}

} // namespace

int StyleReadOperations::getDetObjReprMapEntries(const KorOdbcKey& map,
                                                 KorArray<StructDetObjReprMapKey>& entries) {
    return partsOf(entries, kTableReprMap, map);
}

int StyleReadOperations::getDetViewDimStrategyItems(const KorOdbcKey& strategy,
                                                    KorArray<StructDetViewDimStrategyItem>& items) {
    return partsOf(items, kTableViewDimStrategy, strategy);
}

int StyleReadOperations::getDetObjQualifiersWithRole(const KorOdbcKey& set,
                                                     KorArray<StructDetObjQualifierWithRole>& qualifiers) {
    return partsOf(qualifiers, kTableQualifierSet, set);
}

int StyleReadOperations::getDetViewRequestCategories(const KorOdbcKey& request,
                                                     KorArray<StructDetViewRequestCategory>& categories) {
    return partsOf(categories, kTableViewRequest, request);
}
