#include "model/KorDSMItemPlacing.h"

#include "records/StructRecord.h"

#include <algorithm>

namespace KorDSMItemPlacing {

KorDSMDatabaseItem* findChild(const KorDSMDatabaseItem& parent, std::int32_t key) {
    for (KorDSMDatabaseItem* child : parent.children())
        if (child->recordKey() == key)
            return child;
    return nullptr;
}

Filling::Filling(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups) : m_addIn(addIn), m_groups(groups) {
    m_present.reserve(static_cast<std::size_t>(addIn.children().length()));
    for (KorDSMDatabaseItem* child : addIn.children())
        m_present.try_emplace(child->recordKey(), child);
}

Filling::~Filling() {
    if (!m_grown)
        return;
    const auto comesBefore = [byName = m_groups.isCategory](const KorDSMDatabaseItem* a,
                                                            const KorDSMDatabaseItem* b) {
        return byName ? a->record()->name.compare(b->record()->name) < 0 : a->recordKey() < b->recordKey();
    };
    std::stable_sort(m_addIn.children().begin(), m_addIn.children().end(), comesBefore);
}

KorDSMDatabaseItem& Filling::place(const StructRecord& record) {
    KorDSMDatabaseItem*& item = m_present[record.key];
    if (!item) {
        item = KorDSMFamilies::makeItem(m_groups, record).release();
        m_addIn.addChild(item);
        m_grown = true;
    }
    return *item;
}

KorDSMDatabaseItem& place(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups, const StructRecord& record) {
    return Filling(addIn, groups).place(record);
}

} // namespace KorDSMItemPlacing
