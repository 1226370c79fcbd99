#include "session/KorDSMRequestItems.h"

#include "model/items/KorDsmItems.h"
#include "operations/KorDSNManager.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/StyleReads.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <unordered_map>

namespace KorDSMRequestItems {

namespace {

using Utilities = KorDetStructureUtilities;

constexpr int kWithoutCategory = 33728;

template <typename R>
std::vector<const R*> sorted(int (*compare)(const R&, const R&)) {
    std::vector<const R*> records;
    const RowArray* rows = StyleReads::rows<R>();
    for (int i = 0; rows && i < rows->size(); ++i)
        records.push_back(static_cast<const R*>(&rows->at(i)));
    std::ranges::stable_sort(records, [compare](const R* a, const R* b) { return compare(*a, *b) < 0; });
    return records;
}

KorDSMDatabaseItem& addCategory(KorDsmAddInRequestItem& source, std::int32_t key, const KorString& name) {
    StructDetViewRequestCategory record;
    record.key = record.categoryKey = key;
    record.name = name;
    auto& category = source.addChild(std::make_unique<KorDsmViewRequestCategoryItem>());
    category.initRecord(record);
    return category;
}

void addRequest(KorDSMDatabaseItem& category, const StructDetViewRequest& request) {
    auto& item = category.addChild(std::make_unique<KorDsmViewRequestItem>());
    item.initRecord(request);
    item.setExpanded(); // what it uses is not shown here
}

} // namespace

std::vector<SourceId> sources(bool all) {
    if (!all)
        return {KorDSMItemSource::current()};
    std::vector<SourceId> sources{SourceId::standard()};
    KorArray<KorAddInId> addIns;
    AddInManagerInterface::getInstance().getInstalledAddIns(addIns);
    for (const KorAddInId& addIn : addIns)
        sources.push_back(
            {KorDSNDefinitions::kAddIn, KorDSNManager::getInstance().getAddInIdx(addIn.number)});
    sources.push_back(SourceId::user());
    return sources;
}

std::unique_ptr<KorDsmAddInRequestItem> makeSource(SourceId source, std::int32_t icon) {
    return std::make_unique<KorDsmAddInRequestItem>(source.index, KorDSMWhereUsed::sourceName(source), icon);
}

void fill(KorDsmAddInRequestItem& source) {
    const SourceId id = KorDSMItemSource::sourceOf(&source);
    const KorDSNRequest request(id.dsn, id.index);
    source.deleteChildren();
    std::unordered_map<std::int32_t, KorDSMDatabaseItem*> categories; // by key
    for (const StructDetBaseCategory* category : sorted(&Utilities::compareDetBaseCategories))
        categories[category->key] = &addCategory(source, category->key, category->name);
    std::unordered_multimap<std::int32_t, KorDSMDatabaseItem*> listings; // by the request's key
    const RowArray* filings = StyleReads::rows<StructDetViewRequestCategory>();
    for (int i = 0; filings && i < filings->size(); ++i) {
        const auto& filing = static_cast<const StructDetViewRequestCategory&>(filings->at(i));
        if (const auto it = categories.find(filing.categoryKey); it != categories.end())
            listings.emplace(filing.viewRequestKey, it->second);
    }
    KorDSMDatabaseItem* unfiled = nullptr;
    for (const StructDetViewRequest* view : sorted(&Utilities::compareViewRequests)) {
        const auto [first, last] = listings.equal_range(view->key);
        for (auto it = first; it != last; ++it)
            addRequest(*it->second, *view);
        if (first != last)
            continue;
        if (!unfiled)
            unfiled = &addCategory(source, 0, Prompts::ups(kWithoutCategory));
        addRequest(*unfiled, *view);
    }
}

namespace {

KorDSMDatabaseItem* findIn(const KorDSMDatabaseItem& source, std::int32_t key) {
    for (const KorDSMDatabaseItem* category : source.children())
        for (KorDSMDatabaseItem* view : category->children())
            if (view->recordKey() == key)
                return view;
    return nullptr;
}

} // namespace

KorDSMDatabaseItem* find(const KorDSMDatabaseItem& root, SourceId source, std::int32_t key) {
    for (const KorDSMDatabaseItem* each : root.children())
        if (KorDSMItemSource::sourceOf(each) == source)
            return findIn(*each, key);
    return nullptr;
}

KorDSMDatabaseItem* find(const KorDSMDatabaseItem& root, std::int32_t key) {
    KorDSMDatabaseItem* found = find(root, KorDSMItemSource::current(), key);
    for (const KorDSMDatabaseItem* source : root.children())
        if (!found)
            found = findIn(*source, key);
    return found;
}

std::int32_t categoryOf(const KorDSMDatabaseItem& item) {
    const KorDSMDatabaseItem* category = item.ancestor(KorDSMDefines::kViewRequestCategory);
    return category ? category->recordKey() : 0;
}

} // namespace KorDSMRequestItems
