#pragma once

#include "model/items/KorDsmItems.h"

#include <algorithm>
#include <functional>

/// How loaded items find their place below an add-in item.
namespace KorDSMItemPlacing {

/// The child of `parent` whose record has this key, or null.
inline KorDSMDatabaseItem* findChild(const KorDSMDatabaseItem& parent, std::int32_t key) {
    for (KorDSMDatabaseItem* child : parent.children())
        if (child->recordKey() == key)
            return child;
    return nullptr;
}

/// Sorts the categories below an add-in by name, case-sensitive by code point.
void sortCategories(KorDSMDatabaseItem& addIn);
/// Sorts the groups below an add-in by key.
void sortGroups(KorDSMDatabaseItem& addIn);

/// The category or group item for `record` below an add-in: the present one with the record's key, else a
/// new one at its place.
template <typename Item>
Item& place(KorDSMDatabaseItem& addIn, const typename Item::Record& record) {
    if (KorDSMDatabaseItem* present = findChild(addIn, record.key))
        return static_cast<Item&>(*present);
    auto* item = new Item;
    item->initRecord(record);
    addIn.addChild(item);
    if constexpr (std::is_same_v<Item, KorDsmDetailStyleCategoryItem>)
        sortCategories(addIn);
    else
        sortGroups(addIn);
    return *item;
}

} // namespace KorDSMItemPlacing
