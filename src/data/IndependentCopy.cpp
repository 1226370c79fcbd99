#include "data/IndependentCopy.h"

#include "data/FreeName.h"
#include "data/RowClosure.h"

#include <algorithm>

std::int32_t IndependentCopy::copy(RowRef row, const KorString& name) {
    const RowArray& rows = m_source.table(row.table).rows();
    const auto record = rows.copyOf(rows.find(row.key));
    record->name = name;
    if (!append(row, *record))
        return 0;
    m_copies[row] = record->key;
    for (const Referrer& part : partsOf(m_source, row)) {
        const RowArray& parts = m_source.table(part.table->type).rows();
        const auto copied = parts.copyOf(parts.find(part.key));
        part.column->integerIn(copied.get()) = record->key;
        if (!append({part.table->type, part.key}, *copied))
            return 0;
    }
    return record->key;
}

// References form no circle between tables, so this ends.
std::int32_t IndependentCopy::copyOf(RowRef row) {
    if (const auto known = m_copies.find(row); known != m_copies.end())
        return known->second;
    const StructRecord* record = m_source.table(row.table).find(KorOdbcKey(row.key));
    return record ? copy(row, freeName(m_source, row.table, record->name)) : 0;
}

bool IndependentCopy::append(RowRef row, StructRecord& record) {
    record.key = 0;
    for (const Column& column : findTable(row.table)->columns) {
        if (!column.isReference() || column.role != eReferenceRole::kUses ||
            !findTable(column.target)->isMadeToBeUsed())
            continue;
        std::int32_t& cell = column.integerIn(&record);
        if (!m_source.table(column.target).find(KorOdbcKey(cell)))
            continue; // it stays as it is, and is reported by the check
        cell = copyOf({column.target, cell});
        if (cell == 0)
            return false;
    }
    return m_databases.appendStored(row.table, record) == WriteResult::kWritten;
}
