#pragma once

#include "data/store/StyleStore.h"

#include <array>

/// The rows of all tables of one style database, in memory and apart from any store.
class TableRows {
public:
    TableRows();

    RowArray& of(eTableType type) { return *m_rows[static_cast<std::size_t>(type)]; }
    const RowArray& of(eTableType type) const { return *m_rows[static_cast<std::size_t>(type)]; }

    /// Appends all rows to the open transaction of `store`.
    Result<> appendTo(StyleStore& store) const;

private:
    std::array<std::unique_ptr<RowArray>, kEndOfTables> m_rows; // null at the number that is no table
};
