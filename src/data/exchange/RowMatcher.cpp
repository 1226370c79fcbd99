#include "data/exchange/RowMatcher.h"

#include "data/FreeName.h"
#include "data/RowClosure.h"

#include <algorithm>

namespace {

bool isFilingPlace(eTableType table) {
    return std::ranges::any_of(allTables(), [table](const TableSchema& other) {
        return std::ranges::any_of(other.columns, [table](const Column& column) {
            return column.target == table && column.role == eReferenceRole::kFiledUnder;
        });
    });
}

} // namespace

std::int32_t RowMatcher::find(RowRef row) {
    if (const auto known = m_found.find(row); known != m_found.end())
        return known->second;
    const std::int32_t key = search(row);
    m_found[row] = key;
    return key;
}

std::int32_t RowMatcher::search(RowRef row) {
    const StructRecord* record = m_from.table(row.table).find(KorOdbcKey(row.key));
    if (!record)
        return 0;
    const StyleTable& table = m_to.table(row.table);
    const StructRecord* candidate = table.find(record->name);
    if (isFilingPlace(row.table))
        return candidate ? candidate->key : 0;
    for (int number = 1; candidate; ++number) {
        if (equalContent(row, candidate->key))
            return candidate->key;
        candidate = table.find(numberedName(record->name, number));
    }
    return 0;
}

bool RowMatcher::equalContent(RowRef row, std::int32_t key) {
    const StructRecord* other = m_to.table(row.table).find(KorOdbcKey(key));
    const auto wanted = translated(row);
    if (!wanted || !other)
        return false;
    wanted->key = other->key;
    wanted->name = other->name;
    return m_to.table(row.table).rows().equal(*wanted, *other) && equalParts(row, key);
}

bool RowMatcher::equalParts(RowRef row, std::int32_t key) {
    const std::vector<Referrer> parts = partsOf(m_from, row);
    const std::vector<Referrer> others = partsOf(m_to, {row.table, key});
    const StructRecord& whole = *m_to.table(row.table).find(KorOdbcKey(key));
    return std::ranges::equal(parts, others, [&](const Referrer& part, const Referrer& other) {
        if (part.column != other.column)
            return false;
        const StyleTable& table = m_to.table(other.table->type);
        const auto wanted = translatedPart(part, whole);
        if (wanted)
            wanted->key = other.key;
        return wanted && table.rows().equal(*wanted, *table.find(KorOdbcKey(other.key)));
    });
}

std::shared_ptr<StructRecord> RowMatcher::translated(RowRef row, const Column* known, std::int32_t key) {
    const StyleTable& table = m_from.table(row.table);
    const StructRecord* record = table.find(KorOdbcKey(row.key));
    if (!record)
        return nullptr;
    const auto copy = table.rows().copyOf(record);
    copy->key = 0;
    for (const Column& column : table.schema().columns) {
        if (!column.isReference())
            continue;
        std::int32_t& cell = column.integerIn(copy.get());
        const RowRef target{column.target, cell};
        const bool exists = m_from.table(target.table).find(KorOdbcKey(target.key)) != nullptr;
        cell = &column == known ? key : exists ? find(target) : 0;
        if (exists && cell == 0)
            return nullptr;
    }
    return copy;
}

std::shared_ptr<StructRecord> RowMatcher::translatedPart(const Referrer& part, const StructRecord& whole) {
    const StyleTable& table = m_from.table(part.table->type);
    auto copy = translated({part.table->type, part.key}, part.column, whole.key);
    if (!copy)
        return copy;
    const std::int32_t ownWhole = part.column->integerIn(table.find(KorOdbcKey(part.key)));
    if (copy->name == m_from.table(part.column->target).find(KorOdbcKey(ownWhole))->name)
        copy->name = whole.name;
    return copy;
}
