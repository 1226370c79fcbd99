#include "model/KorDSMAddedItemsCollection.h"

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"

#include <algorithm>

KorDSMAddedItemsCollection::~KorDSMAddedItemsCollection() {
    for (const auto& [data, key] : m_Keys)
        delete data;
}

void KorDSMAddedItemsCollection::add(KorDSMTreeItemData* data) {
    KorDSMDatabaseItem* item = data->getItem();
    const std::int32_t key = item ? item->recordKey() : 0;
    if (item && KorDSMDefines::canHaveEqualItems(data->getType())) {
        const auto [first, last] = m_ByKey.equal_range(key);
        for (auto it = first; it != last; ++it)
            if (KorDSMDatabaseItem* present = it->second->getItem(); present && present->isEqual(*item))
                present->linkEqualItem(*item);
    }
    m_ByKey.emplace(key, data);
    m_Keys.emplace(data, key);
}

bool KorDSMAddedItemsCollection::remove(KorDSMTreeItemData* data) {
    const auto found = m_Keys.find(data);
    if (found == m_Keys.end())
        return false;
    const auto [first, last] = m_ByKey.equal_range(found->second);
    m_ByKey.erase(std::find_if(first, last, [data](const auto& entry) { return entry.second == data; }));
    m_Keys.erase(found);
    return true;
}
