#pragma once

#include "records/Referrer.h"

#include <vector>

/// Who refers to the rows of one table of one source, by the key referred to.
class ReferenceIndex {
public:
    /// Room for what `rows`, of `table`, say about rows of `target`.
    void reserve(const TableSchema& table, const RowArray& rows, eTableType target);
    /// Adds what the reference columns of `record`, a row of `table`, say about rows of `target`.
    void add(const TableSchema& table, const StructRecord& record, eTableType target);
    void add(std::int32_t targetKey, const Referrer& referrer);
    void remove(std::int32_t targetKey, const Referrer& referrer);

    /// All cells that refer to the row, in the order of table types, keys and columns.
    std::vector<Referrer> referrersOf(std::int32_t targetKey) const;

private:
    /// A chain goes through all cells of one bucket; buckets are a power of two. As small as can be: a large
    /// database has a million.
    struct Cell {
        std::int32_t target = 0; ///< 0 where it is free
        std::int32_t next = kEnd;
        std::int32_t key = 0;
        std::int16_t table = 0;  ///< type
        std::int16_t column = 0; ///< index in the table's columns

        Referrer referrer() const;
    };
    static constexpr std::int32_t kEnd = -1;

    std::size_t bucketOf(std::int32_t targetKey) const;
    void rehash(std::size_t buckets);

    std::vector<std::int32_t> m_buckets; // first cells
    std::vector<Cell> m_cells;
    std::int32_t m_free = kEnd; // first cell of those that were removed
};
