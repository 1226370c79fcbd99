#pragma once

#include "model/KorDSMDefines.h"

class KorDSMDatabaseItem;

/// Opaque handle of an entry in the main tree; only the tree side knows what is behind it.
using KorTreeItemHandle = void*;

/// The record attached to each tree entry.
class KorDSMTreeItemData {
public:
    KorDSMTreeItemData() = default;
    explicit KorDSMTreeItemData(KorDSMDatabaseItem& item);
    virtual ~KorDSMTreeItemData() = default;

    KorDSMDefines::eItemType getType() const { return m_Type; }
    KorDSMDatabaseItem* getItem() const { return m_pItem; }

    KorTreeItemHandle m_hTreeItem = nullptr;
    KorTreeItemHandle m_hSecondItem = nullptr;
    KorDSMDefines::eItemType m_Type = KorDSMDefines::kNoType;
    KorDSMDatabaseItem* m_pItem = nullptr; ///< not owned
};
