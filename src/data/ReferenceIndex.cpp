#include "data/ReferenceIndex.h"

#include <algorithm>
#include <bit>
#include <tuple>
#include <utility>

namespace {

std::int16_t indexOf(const Referrer& referrer) {
    return static_cast<std::int16_t>(referrer.column - referrer.table->columns.data());
}

} // namespace

std::size_t ReferenceIndex::bucketOf(std::int32_t targetKey) const {
    constexpr std::uint32_t kSpread = 2654435769U; // keys that are far apart by a round number too
    return (static_cast<std::uint32_t>(targetKey) * kSpread) >> 7 & (m_buckets.size() - 1);
}

void ReferenceIndex::rehash(std::size_t buckets) {
    m_buckets.assign(buckets, kEnd);
    m_free = kEnd;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        Cell& cell = m_cells[i];
        std::int32_t& first = cell.target != 0 ? m_buckets[bucketOf(cell.target)] : m_free;
        cell.next = std::exchange(first, static_cast<std::int32_t>(i));
    }
}

Referrer ReferenceIndex::Cell::referrer() const {
    const TableSchema& schema = *findTable(static_cast<eTableType>(table));
    return {&schema, &schema.columns[static_cast<std::size_t>(column)], key};
}

void ReferenceIndex::reserve(const TableSchema& table, const RowArray& rows, eTableType target) {
    std::size_t cells = m_cells.size();
    for (const Column& column : table.columns)
        for (int i = 0; column.target == target && i < rows.size(); ++i)
            cells += column.integerIn(&rows.at(i)) > 0;
    m_cells.reserve(cells);
    if (cells > m_buckets.size())
        rehash(std::bit_ceil(cells));
}

void ReferenceIndex::add(const TableSchema& table, const StructRecord& record, eTableType target) {
    for (const Column& column : table.columns)
        if (column.target == target)
            add(column.integerIn(&record), {&table, &column, record.key});
}

void ReferenceIndex::add(std::int32_t targetKey, const Referrer& referrer) {
    if (targetKey <= 0)
        return;
    if (m_cells.size() >= m_buckets.size())
        rehash(std::bit_ceil(m_cells.size() + 1));
    std::int32_t at = m_free;
    if (at != kEnd) {
        m_free = m_cells[static_cast<std::size_t>(at)].next;
    } else {
        at = static_cast<std::int32_t>(m_cells.size());
        m_cells.emplace_back();
    }
    std::int32_t& first = m_buckets[bucketOf(targetKey)];
    m_cells[static_cast<std::size_t>(at)] = {
        targetKey, first, referrer.key, static_cast<std::int16_t>(referrer.table->type), indexOf(referrer)};
    first = at;
}

void ReferenceIndex::remove(std::int32_t targetKey, const Referrer& referrer) {
    if (m_buckets.empty())
        return;
    for (std::int32_t* at = &m_buckets[bucketOf(targetKey)]; *at != kEnd;) {
        const std::int32_t found = *at;
        Cell& cell = m_cells[static_cast<std::size_t>(found)];
        if (cell.target != targetKey || cell.key != referrer.key || cell.table != referrer.table->type ||
            cell.column != indexOf(referrer)) {
            at = &cell.next;
            continue;
        }
        *at = cell.next;
        cell = {0, std::exchange(m_free, found)};
        return;
    }
}

std::vector<Referrer> ReferenceIndex::referrersOf(std::int32_t targetKey) const {
    std::vector<Referrer> found;
    std::int32_t at = m_buckets.empty() ? kEnd : m_buckets[bucketOf(targetKey)];
    for (; at != kEnd; at = m_cells[static_cast<std::size_t>(at)].next)
        if (const Cell& cell = m_cells[static_cast<std::size_t>(at)]; cell.target == targetKey)
            found.push_back(cell.referrer());
    std::ranges::sort(found, {}, [](const Referrer& each) {
        return std::tuple(each.table->type, each.key, each.column->number);
    });
    return found;
}
