#include "model/items/KorDSMTreeItemData.h"

#include "model/items/KorDSMDatabaseItem.h"

KorDSMTreeItemData::KorDSMTreeItemData(KorDSMDatabaseItem& item) : m_Type(item.type()), m_pItem(&item) {}
