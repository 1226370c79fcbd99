#include "data/ReferenceIndex.h"

#include <algorithm>
#include <tuple>

void ReferenceIndex::add(const TableSchema& table, const StructRecord& record, eTableType target) {
    for (const Column& column : table.columns)
        if (column.target == target)
            add(column.integerIn(&record), {&table, &column, record.key});
}

void ReferenceIndex::add(std::int32_t targetKey, const Referrer& referrer) {
    if (targetKey > 0)
        m_referrers.emplace(targetKey, referrer);
}

void ReferenceIndex::remove(std::int32_t targetKey, const Referrer& referrer) {
    const auto [first, last] = m_referrers.equal_range(targetKey);
    const auto it = std::find_if(first, last, [&](const auto& entry) {
        return entry.second.key == referrer.key && entry.second.column == referrer.column;
    });
    if (it != last)
        m_referrers.erase(it);
}

std::vector<Referrer> ReferenceIndex::referrersOf(std::int32_t targetKey) const {
    std::vector<Referrer> found;
    const auto [first, last] = m_referrers.equal_range(targetKey);
    for (auto it = first; it != last; ++it)
        found.push_back(it->second);
    std::ranges::sort(found, {}, [](const Referrer& referrer) {
        return std::tuple(referrer.table->type, referrer.key, referrer.column->number);
    });
    return found;
}
