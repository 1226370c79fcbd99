#pragma once

#include "base/KorTreeHandle.h"
#include "model/KorDSMDefines.h"

class KorDSMDatabaseItem;

/// The record attached to each tree entry.
class KorDSMTreeItemData {
public:
    KorDSMTreeItemData() = default;
    explicit KorDSMTreeItemData(KorDSMDatabaseItem& item);
    virtual ~KorDSMTreeItemData() = default;

    KorDSMDefines::eItemType getType() const { return m_Type; }
    KorDSMDatabaseItem* getItem() const { return m_pItem; }

    KorTreeHandle m_hTreeItem = nullptr;
    KorTreeHandle m_hSecondItem = nullptr;
    KorDSMDefines::eItemType m_Type = KorDSMDefines::kNoType;
    KorDSMDatabaseItem* m_pItem = nullptr; ///< not owned
};
