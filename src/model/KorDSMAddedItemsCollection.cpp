#include "model/KorDSMAddedItemsCollection.h"

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"

#include <algorithm>

void KorDSMAddedItemsCollection::add(std::unique_ptr<KorDSMTreeItemData> data) {
    KorDSMDatabaseItem* item = data->getItem();
    const std::int32_t key = item ? item->recordKey() : 0;
    if (item && KorDSMDefines::canHaveEqualItems(data->getType())) {
        const auto [first, last] = m_ByKey.equal_range(key);
        for (auto it = first; it != last; ++it)
            if (KorDSMDatabaseItem* present = it->second->getItem(); present && present->isEqual(*item))
                present->linkEqualItem(*item);
    }
    KorDSMTreeItemData* entry = data.get();
    m_ByKey.emplace(key, entry);
    m_Entries.emplace(entry, Entry{key, std::move(data)});
}

std::unique_ptr<KorDSMTreeItemData> KorDSMAddedItemsCollection::remove(const KorDSMTreeItemData* data) {
    auto found = m_Entries.extract(data);
    if (found.empty())
        return nullptr;
    const auto [first, last] = m_ByKey.equal_range(found.mapped().key);
    m_ByKey.erase(std::find_if(first, last, [data](const auto& entry) { return entry.second == data; }));
    return std::move(found.mapped().data);
}
