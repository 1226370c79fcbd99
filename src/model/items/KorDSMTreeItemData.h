#pragma once

#include "model/KorDSMDefines.h"

class KorDSMDatabaseItem;

/// The record attached to each tree entry: which item it shows.
class KorDSMTreeItemData {
public:
    KorDSMTreeItemData() = default;
    /// For a `KorDSMDatabaseItem`, whatever its class: items attach these to their entries.
    template <typename Item>
    explicit KorDSMTreeItemData(Item& item) : m_Type(item.type()), m_pItem(&item) {}
    virtual ~KorDSMTreeItemData() = default;

    KorDSMDefines::eItemType getType() const { return m_Type; }
    KorDSMDatabaseItem* getItem() const { return m_pItem; }

private:
    KorDSMDefines::eItemType m_Type = KorDSMDefines::kNoType;
    KorDSMDatabaseItem* m_pItem = nullptr; ///< not owned
};
