#include "data/exchange/ExchangeExport.h"

#include "data/RowClosure.h"

#include <set>

ExchangeExport::ExchangeExport(StyleSource& source, const std::vector<RowRef>& wanted) : m_source(source) {
    std::set<RowRef> rows;
    for (const std::vector<RowRef>& reached : {closureOf(source, wanted), lookUpRows(source)})
        rows.insert(reached.begin(), reached.end());
    for (const RowRef& each : rows) {
        std::vector<std::int32_t>& keys = m_rows[each.table];
        keys.push_back(each.key);
        m_newKeys[each] = static_cast<std::int32_t>(keys.size());
    }
}

std::vector<RowRef> ExchangeExport::rows() const {
    std::vector<RowRef> rows;
    for (const auto& [row, key] : m_newKeys)
        rows.push_back(row);
    return rows;
}

std::shared_ptr<StructRecord> ExchangeExport::translated(const StyleTable& table, std::int32_t key) const {
    auto copy = table.rows().copyOf(table.find(KorOdbcKey(key)));
    copy->key = m_newKeys.at({table.schema().type, key});
    for (const Column& column : table.schema().columns) {
        if (!column.isReference() || column.integerIn(copy.get()) <= 0)
            continue; // no row, or a default
        // a reference that points nowhere must not come to point at whatever gets that key here
        const auto target = m_newKeys.find({column.target, column.integerIn(copy.get())});
        column.integerIn(copy.get()) = target == m_newKeys.end() ? 0 : target->second;
    }
    return copy;
}

Result<> ExchangeExport::writeTable(StyleStore& store, eTableType type,
                                    const std::vector<std::int32_t>& keys) {
    const StyleTable& table = m_source.table(type);
    std::vector<std::shared_ptr<StructRecord>> records;
    TableChange change;
    change.table = &table.schema();
    for (const std::int32_t key : keys)
        change.appended.push_back(records.emplace_back(translated(table, key)).get());
    std::vector<StoreConflict> conflicts;
    return store.apply(change, conflicts);
}

Result<> ExchangeExport::writeInto(StyleStore& store, ExchangeProgress& progress) {
    Result<> result;
    for (auto it = m_rows.begin(); result && it != m_rows.end(); ++it) {
        result = writeTable(store, it->first, it->second);
        m_cancelled = !progress.step();
        if (m_cancelled)
            return Result<>::failure("cancelled"); // so that nothing is kept; nobody reads it
    }
    return result;
}
