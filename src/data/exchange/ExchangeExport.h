#pragma once

#include "data/StyleSource.h"
#include "data/exchange/ExchangeProgress.h"
#include "records/RowRef.h"

#include <map>

/// One row of a source with everything that it depends on, on its way into a database file of its own. Keys
/// are given anew there, from 1 in each table.
class ExchangeExport {
public:
    /// `source` must outlive the export.
    ExchangeExport(StyleSource& source, const std::vector<RowRef>& wanted);

    /// How many tables have rows to be written.
    std::size_t tableCount() const { return m_rows.size(); }
    std::vector<RowRef> rows() const;
    /// Writes the rows into an empty store in which a transaction is open; one step of progress per table.
    Result<> writeInto(StyleStore& store, ExchangeProgress& progress);
    bool isCancelled() const { return m_cancelled; }

private:
    std::shared_ptr<StructRecord> translated(const StyleTable& table, std::int32_t key) const;
    Result<> writeTable(StyleStore& store, eTableType type, const std::vector<std::int32_t>& keys);

    StyleSource& m_source;
    std::map<eTableType, std::vector<std::int32_t>> m_rows; ///< the keys of the rows, ascending
    std::map<RowRef, std::int32_t> m_newKeys;
    bool m_cancelled = false;
};
