#include "model/items/KorDSMTreeItemData.h"

#include "model/items/KorDSMDatabaseItem.h"

KorDSMTreeItemData::KorDSMTreeItemData(KorDSMDatabaseItem& item)
    : m_hTreeItem(item.m_hTreeItem), m_Type(item.m_Type), m_pItem(&item) {}
