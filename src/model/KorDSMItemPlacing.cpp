#include "model/KorDSMItemPlacing.h"

#include "records/StructRecord.h"

#include <algorithm>

namespace {

// Records that stand below an add-in without a group come last.
bool isLoose(const KorDSMDatabaseItem& item) {
    return !KorDSMDefines::isGroupType(item.type());
}

bool comesBeforeByName(const KorDSMDatabaseItem& a, const KorDSMDatabaseItem& b) {
    return isLoose(a) != isLoose(b) ? isLoose(b) : a.record()->name.compare(b.record()->name) < 0;
}

bool comesBeforeByKey(const KorDSMDatabaseItem& a, const KorDSMDatabaseItem& b) {
    return isLoose(a) != isLoose(b) ? isLoose(b) : a.recordKey() < b.recordKey();
}

} // namespace

namespace KorDSMItemPlacing {

KorDSMDatabaseItem* findChild(const KorDSMDatabaseItem& parent, RowRef row) {
    for (KorDSMDatabaseItem* child : parent.children())
        if (child->tableType() == row.table && child->recordKey() == row.key)
            return child;
    return nullptr;
}

Filling::Filling(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups) : m_addIn(addIn), m_groups(groups) {
    m_present.reserve(static_cast<std::size_t>(addIn.children().length()));
    for (KorDSMDatabaseItem* child : addIn.children())
        if (child->type() == groups.type)
            m_present.try_emplace(child->recordKey(), child);
}

Filling::~Filling() {
    if (!m_grown)
        return;
    m_addIn.sortChildren(m_groups.isCategory ? comesBeforeByName : comesBeforeByKey);
}

KorDSMDatabaseItem& Filling::place(const StructRecord& record) {
    KorDSMDatabaseItem*& item = m_present[record.key];
    if (!item) {
        item = &m_addIn.addChild(KorDSMFamilies::makeItem(m_groups, record));
        m_grown = true;
    }
    return *item;
}

KorDSMDatabaseItem& place(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups, const StructRecord& record) {
    return Filling(addIn, groups).place(record);
}

KorDSMDatabaseItem& file(KorDSMDatabaseItem& group, std::unique_ptr<KorDSMDatabaseItem> item) {
    return group.insertChild(std::move(item), comesBeforeByKey);
}

} // namespace KorDSMItemPlacing
