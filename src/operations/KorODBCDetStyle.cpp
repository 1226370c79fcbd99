#include "operations/KorODBCDetStyle.h"

#include "data/StyleDatabases.h"
#include "operations/KorOdbcMan.h"

namespace {

// Whether the view may be filed under all of these categories: a write result.
int judgeFilings(StyleDatabases& databases, std::int32_t view, const KorArray<std::int32_t>& categories) {
    StyleSource* source = databases.here();
    if (!source)
        return WriteResult::kFailed;
    if (!databases.isEditable())
        return WriteResult::kReadOnlySource;
    if (!source->complete())
        return WriteResult::kIncompleteSource;
    const bool allThere = source->table(kTableViewRequest).find(KorOdbcKey(view)) &&
                          std::ranges::all_of(categories, [source](std::int32_t category) {
                              return source->table(kTableBaseCategory).find(KorOdbcKey(category));
                          });
    return allThere && source->whyFull(kTableViewRequestCategory, categories.length()).empty()
               ? WriteResult::kWritten
               : WriteResult::kFailed;
}

} // namespace

int KorODBCDetStyle::setDetViewRequestCategories(const StructDetViewRequest& request,
                                                 const KorArray<std::int32_t>& categories) {
    KorArray<StructDetViewRequestCategory> present;
    getDetViewRequestCategories(KorOdbcKey(request.key), present);
    KorArray<std::int32_t> missing;
    for (const std::int32_t category : categories)
        if (std::ranges::find(present, category, &StructDetViewRequestCategory::categoryKey) == present.end())
            missing.append(category);
    StyleDatabases& databases = StyleDatabases::current();
    if (const int verdict = judgeFilings(databases, request.key, missing); verdict != WriteResult::kWritten)
        return verdict;
    int result = WriteResult::kWritten;
    databases.pending().beginGroup(request.name);
    for (const StructDetViewRequestCategory& filing : present)
        if (categories.find(filing.categoryKey) < 0)
            result = std::min(result, databases.remove(kTableViewRequestCategory, KorOdbcKey(filing.key)));
    for (const std::int32_t category : missing) {
        StructDetViewRequestCategory filing;
        filing.name = request.name;
        filing.viewRequestKey = request.key;
        filing.categoryKey = category;
        result = std::min(result, databases.append(kTableViewRequestCategory, filing));
    }
    databases.pending().endGroup();
    return result;
}

bool KorRequestObject::getSelected(const StructDetBaseCategory& category,
                                   const StructDetViewRequest& request) {
    KorArray<StructDetViewRequestCategory> present;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), present);
    return std::ranges::find(present, category.key, &StructDetViewRequestCategory::categoryKey) !=
           present.end();
}

int KorRequestObject::setSelected(bool selected, const StructDetBaseCategory& category,
                                  const StructDetViewRequest& request) {
    KorArray<StructDetViewRequestCategory> present;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), present);
    KorArray<std::int32_t> keys;
    for (const StructDetViewRequestCategory& filing : present)
        if (filing.categoryKey != category.key)
            keys.append(filing.categoryKey);
    if (selected)
        keys.append(category.key);
    return KorODBCDetStyle::setDetViewRequestCategories(request, keys);
}

int KorODBCTextSizes::getTextSizesList(KorArray<double>& sizes) {
    KorArray<StructTextSize> rows;
    StyleReads::all(rows);
    sizes.clear();
    for (const StructTextSize& row : rows)
        sizes.append(row.size);
    return sizes.length();
}

int KorODBCClippingGap::getClippingGapByValue(double gap, StructClippingGap& record) {
    KorArray<StructClippingGap> rows;
    StyleReads::select(rows, [gap](const StructClippingGap& row) { return row.gap == gap; });
    if (rows.isEmpty())
        return 0;
    record = rows[0];
    return 1;
}

template <typename Group>
int KorODBCGroup<Group>::save(Group& group) {
    Group& current = KorOdbcMan::currentRecord<Group>();
    current = group;
    if (group.key > 0)
        return KorOdbcMan::storeCurrentRecord(tableOf<Group>, KorOdbcMan::kThisRow);
    const int result = KorOdbcMan::appendNewRecord(tableOf<Group>, 0, KorOdbcMan::kThisRow);
    if (result == WriteResult::kWritten)
        group = current;
    return result;
}

template class KorODBCGroup<StructDetObjAnnotationGroup>;
template class KorODBCGroup<StructDetObjQualifierSetGroup>;
template class KorODBCGroup<StructDetViewDimRequestLinearGroup>;
