#pragma once

#include "data/NameIndex.h"
#include "records/KorOdbcKey.h"
#include "records/TableSchema.h"

/// One table of one source in memory, with its index by run name. Rows change only through this class, so
/// that the index always fits them.
class StyleTable {
public:
    explicit StyleTable(const TableSchema& schema) : m_schema(schema), m_rows(schema.makeRows()) {}

    const TableSchema& schema() const { return m_schema; }
    const RowArray& rows() const { return *m_rows; }
    /// For filling the table from a store: empty, whatever it held before.
    RowArray& rowsToFill();

    /// The row, or null.
    const StructRecord* find(KorOdbcKey key) const { return key.isValid() ? m_rows->find(key) : nullptr; }
    /// The row of this run name, the one with the lowest key where several have it, or null.
    const StructRecord* find(const KorString& runName) const;
    /// Whether a row with another key has this run name.
    bool hasOther(const KorString& runName, std::int32_t key) const { return names().hasOther(runName, key); }
    /// `base` with the first number behind it that makes a name no row has.
    KorString numberedFreeName(const KorString& base) const { return names().numberedFreeName(base); }

    /// Stores a cell. The row must exist; returns false when the value does not fit the column.
    bool setCell(KorOdbcKey key, const Column& column, const CellValue& value);
    /// Inserts a copy of `record` at the place of its key.
    void insert(const StructRecord& record);
    void remove(KorOdbcKey key);

    /// A key that no row of this table has or has had while it was in memory; 0 when the highest possible
    /// key is in use.
    std::int32_t unusedKey() const;
    /// The highest key that a row of this table has or has had; 0 when there is none.
    std::int32_t highestKey() const;

private:
    NameIndex& names() const;

    const TableSchema& m_schema;
    std::unique_ptr<RowArray> m_rows;
    mutable std::unique_ptr<NameIndex> m_names; // made at the first look-up by name
    mutable std::int32_t m_highestKey = 0;
};
