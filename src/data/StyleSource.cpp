#include "data/StyleSource.h"

#include "base/KorAssert.h"

StyleTable& StyleSource::table(eTableType type) {
    const TableSchema* schema = findTable(type);
    if (!KorAssert::check(schema != nullptr, "schema != nullptr"))
        schema = &allTables().front();
    auto& slot = m_tables[static_cast<std::size_t>(schema->type)];
    if (!slot) {
        slot = std::make_unique<StyleTable>(*schema);
        const StoreResult result = m_store->readTable(*schema, slot->rowsToFill(), m_problems);
        if (!result)
            m_problems.push_back({result.error});
    }
    return *slot;
}

ReferenceIndex& StyleSource::references(eTableType target) {
    auto& slot = m_references[static_cast<std::size_t>(target)];
    if (slot)
        return *slot;
    slot = std::make_unique<ReferenceIndex>();
    for (const TableSchema& schema : allTables()) {
        if (std::ranges::find(schema.columns, target, &Column::target) == schema.columns.end())
            continue;
        const RowArray& rows = table(schema.type).rows();
        slot->reserve(rows.size());
        for (int i = 0; i < rows.size(); ++i)
            slot->add(schema, rows.at(i), target);
    }
    return *slot;
}

ReferenceIndex* StyleSource::builtReferences(const Column& column) {
    return column.isReference() ? m_references[static_cast<std::size_t>(column.target)].get() : nullptr;
}

std::vector<Referrer> StyleSource::referrersOf(eTableType target, KorOdbcKey key) {
    return key.isValid() ? references(target).referrersOf(key) : std::vector<Referrer>();
}

bool StyleSource::setCell(eTableType type, KorOdbcKey key, const Column& column, const CellValue& value) {
    StyleTable& rows = table(type);
    const StructRecord* row = rows.find(key);
    if (!row)
        return false;
    ReferenceIndex* index = builtReferences(column);
    const std::int32_t before = index ? column.integerIn(row) : 0;
    if (!rows.setCell(key, column, value))
        return false;
    if (index) {
        const Referrer referrer{&rows.schema(), &column, key};
        index->remove(before, referrer);
        index->add(column.integerIn(row), referrer);
    }
    return true;
}

void StyleSource::insert(eTableType type, const StructRecord& record) {
    table(type).insert(record);
    updateReferences(table(type).schema(), record, true);
}

void StyleSource::remove(eTableType type, KorOdbcKey key) {
    if (const StructRecord* row = table(type).find(key))
        updateReferences(table(type).schema(), *row, false);
    table(type).remove(key);
}

void StyleSource::updateReferences(const TableSchema& table, const StructRecord& record, bool added) {
    for (const Column& column : table.columns) {
        ReferenceIndex* index = builtReferences(column);
        if (!index)
            continue;
        const Referrer referrer{&table, &column, record.key};
        if (added)
            index->add(column.integerIn(&record), referrer);
        else
            index->remove(column.integerIn(&record), referrer);
    }
}

void StyleSource::dropTables() {
    for (auto& table : m_tables)
        table.reset();
    for (auto& index : m_references)
        index.reset();
    m_problems.clear();
}
