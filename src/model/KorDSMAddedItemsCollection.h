#pragma once

#include "model/items/KorDSMTreeItemData.h"

#include <cstdint>
#include <memory>

#include <unordered_map>

/// The tree item data of the items of one type that came into the tree while the editor was open.
class KorDSMAddedItemsCollection {
public:
    explicit KorDSMAddedItemsCollection(KorDSMDefines::eItemType type) : m_Type(type) {}
    virtual ~KorDSMAddedItemsCollection() = default;
    KorDSMAddedItemsCollection(const KorDSMAddedItemsCollection&) = delete;
    KorDSMAddedItemsCollection& operator=(const KorDSMAddedItemsCollection&) = delete;

    KorDSMDefines::eItemType getType() const { return m_Type; }

    /// Takes the entry over and links its item with every item here that is equal to it.
    void add(std::unique_ptr<KorDSMTreeItemData> data);
    /// Gives the entry to the caller; null when it is not here.
    std::unique_ptr<KorDSMTreeItemData> remove(const KorDSMTreeItemData* data);
    int length() const { return static_cast<int>(m_Entries.size()); }

private:
    KorDSMDefines::eItemType m_Type;
    // Equal records have equal keys, so only entries of one key are compared.
    std::unordered_multimap<std::int32_t, KorDSMTreeItemData*> m_ByKey;
    struct Entry {
        std::int32_t key = 0;
        std::unique_ptr<KorDSMTreeItemData> data;
    };
    std::unordered_map<const KorDSMTreeItemData*, Entry> m_Entries;
};
