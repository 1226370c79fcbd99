#pragma once

#include "records/Referrer.h"

#include <unordered_map>
#include <vector>

/// Who refers to the rows of one table of one source, by the key referred to.
class ReferenceIndex {
public:
    /// Room for `count` more cells.
    void reserve(int count) { m_referrers.reserve(m_referrers.size() + static_cast<std::size_t>(count)); }
    /// Adds what the reference columns of `record`, a row of `table`, say about rows of `target`.
    void add(const TableSchema& table, const StructRecord& record, eTableType target);
    void add(std::int32_t targetKey, const Referrer& referrer);
    void remove(std::int32_t targetKey, const Referrer& referrer);

    /// All cells that refer to the row, in the order of table types, keys and columns.
    std::vector<Referrer> referrersOf(std::int32_t targetKey) const;

private:
    std::unordered_multimap<std::int32_t, Referrer> m_referrers;
};
