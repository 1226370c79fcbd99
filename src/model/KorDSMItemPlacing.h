#pragma once

#include "model/items/KorDsmItems.h"

#include <algorithm>
#include <unordered_map>

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

/// Puts any number of categories or groups below an add-in: finds each by its key and sorts them once, at
/// the end, so that the work grows no faster than n log n.
template <typename Item>
class Filling {
public:
    /// `addIn` must outlive the filling.
    explicit Filling(KorDSMDatabaseItem& addIn) : m_addIn(addIn) {
        m_present.reserve(static_cast<std::size_t>(addIn.children().length()));
        for (KorDSMDatabaseItem* child : addIn.children())
            m_present.try_emplace(child->recordKey(), child);
    }
    ~Filling() {
        if (!m_grown)
            return;
        if constexpr (std::is_same_v<Item, KorDsmDetailStyleCategoryItem>)
            sortCategories(m_addIn);
        else
            sortGroups(m_addIn);
    }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

    /// The item for `record`: the present one with the record's key, else a new one, which is at its place
    /// once the filling has ended.
    Item& place(const typename Item::Record& record) {
        KorDSMDatabaseItem*& item = m_present[record.key];
        if (!item) {
            auto* made = new Item;
            made->initRecord(record);
            m_addIn.addChild(made);
            item = made;
            m_grown = true;
        }
        return static_cast<Item&>(*item);
    }

private:
    KorDSMDatabaseItem& m_addIn;
    std::unordered_map<std::int32_t, KorDSMDatabaseItem*> m_present;
    bool m_grown = false;
};

/// The category or group item for one `record` below an add-in: the present one with the record's key, else
/// a new one at its place.
template <typename Item>
Item& place(KorDSMDatabaseItem& addIn, const typename Item::Record& record) {
    return Filling<Item>(addIn).place(record);
}

} // namespace KorDSMItemPlacing
