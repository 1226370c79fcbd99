#include "operations/KorODBCDetStyle.h"

#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "operations/KorOdbcMan.h"

namespace {

// What would come of filing the view under all of these categories.
WriteResult judgeFilings(StyleDatabases& databases, std::int32_t view,
                         const KorArray<std::int32_t>& categories) {
    StyleSource* source = databases.here();
    if (!source)
        return WriteRefusal::notOpen();
    if (!databases.isEditable())
        return WriteRefusal::readOnly(databases.whyNotEditable(source->id()));
    if (Result<> whole = source->complete(); !whole)
        return WriteRefusal::incomplete(std::move(whole));
    const bool allThere = source->table(kTableViewRequest).find(KorOdbcKey(view)) &&
                          std::ranges::all_of(categories, [source](std::int32_t category) {
                              return source->table(kTableBaseCategory).find(KorOdbcKey(category));
                          });
    if (!allThere)
        return WriteRefusal::noRow();
    std::string why = source->whyFull(kTableViewRequestCategory, categories.length());
    return why.empty() ? WriteResult() : WriteRefusal::full(std::move(why));
}

WriteResult fileUnder(const StructDetViewRequest& request, const KorArray<std::int32_t>& categories) {
    KorArray<StructDetViewRequestCategory> present;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), present);
    KorArray<std::int32_t> missing;
    for (const std::int32_t category : categories)
        if (std::ranges::find(present, category, &StructDetViewRequestCategory::categoryKey) == present.end())
            missing.append(category);
    StyleDatabases& databases = StyleDatabases::current();
    WriteResult result = judgeFilings(databases, request.key, missing);
    if (result.isFailed())
        return result;
    const auto note = [&result](const WriteResult& write) {
        if (write.isFailed())
            result = write;
    };
    databases.pending().beginGroup(request.name);
    for (const StructDetViewRequestCategory& filing : present)
        if (categories.find(filing.categoryKey) < 0)
            note(databases.remove(kTableViewRequestCategory, KorOdbcKey(filing.key)));
    for (const std::int32_t category : missing) {
        StructDetViewRequestCategory filing;
        filing.name = request.name;
        filing.viewRequestKey = request.key;
        filing.categoryKey = category;
        note(databases.append(kTableViewRequestCategory, filing));
    }
    databases.pending().endGroup();
    return result;
}

} // namespace

int KorODBCDetStyle::setDetViewRequestCategories(const StructDetViewRequest& request,
                                                 const KorArray<std::int32_t>& categories) {
    return fileUnder(request, categories).code();
}

bool KorRequestObject::getSelected(const StructDetBaseCategory& category,
                                   const StructDetViewRequest& request) {
    KorArray<StructDetViewRequestCategory> present;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), present);
    return std::ranges::find(present, category.key, &StructDetViewRequestCategory::categoryKey) !=
           present.end();
}

WriteResult KorRequestObject::setSelected(bool selected, const StructDetBaseCategory& category,
                                          const StructDetViewRequest& request) {
    KorArray<StructDetViewRequestCategory> present;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), present);
    KorArray<std::int32_t> keys;
    for (const StructDetViewRequestCategory& filing : present)
        if (filing.categoryKey != category.key)
            keys.append(filing.categoryKey);
    if (selected)
        keys.append(category.key);
    return fileUnder(request, keys);
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
