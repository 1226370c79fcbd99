#pragma once

#include "model/items/KorDSMTreeItemData.h"

#include <cstdint>

#include <unordered_map>

/// The tree item data of the items of one type that came into the tree while the editor was open.
class KorDSMAddedItemsCollection {
public:
    explicit KorDSMAddedItemsCollection(KorDSMDefines::eItemType type) : m_Type(type) {}
    virtual ~KorDSMAddedItemsCollection();
    KorDSMAddedItemsCollection(const KorDSMAddedItemsCollection&) = delete;
    KorDSMAddedItemsCollection& operator=(const KorDSMAddedItemsCollection&) = delete;

    KorDSMDefines::eItemType getType() const { return m_Type; }

    /// Takes the entry over and links its item with every item here that is equal to it.
    void add(KorDSMTreeItemData* data);
    /// Gives the entry back to the caller. Returns false when it is not here.
    bool remove(KorDSMTreeItemData* data);
    int length() const { return static_cast<int>(m_Keys.size()); }

private:
    KorDSMDefines::eItemType m_Type;
    // Equal records have equal keys, so only entries of one key are compared.
    std::unordered_multimap<std::int32_t, KorDSMTreeItemData*> m_ByKey; // owns its entries
    std::unordered_map<KorDSMTreeItemData*, std::int32_t> m_Keys;
};
