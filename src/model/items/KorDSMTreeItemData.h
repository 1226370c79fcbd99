#pragma once

#include "model/KorDSMDefines.h"

class KorDSMDatabaseItem;

/// The record attached to each tree entry: which item it shows.
class KorDSMTreeItemData {
public:
    KorDSMTreeItemData() = default;
    explicit KorDSMTreeItemData(KorDSMDatabaseItem& item);
    virtual ~KorDSMTreeItemData() = default;

    KorDSMDefines::eItemType getType() const { return m_Type; }
    KorDSMDatabaseItem* getItem() const { return m_pItem; }

private:
    KorDSMDefines::eItemType m_Type = KorDSMDefines::kNoType;
    KorDSMDatabaseItem* m_pItem = nullptr; ///< not owned
};
