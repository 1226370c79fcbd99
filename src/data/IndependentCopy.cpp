#include "data/IndependentCopy.h"

#include "data/FreeName.h"
#include "data/RowClosure.h"

WriteResult IndependentCopy::copy(RowRef row, const KorString& name, std::int32_t& key) {
    const RowArray& rows = m_source.table(row.table).rows();
    const auto record = rows.copyOf(rows.find(row.key));
    record->name = name;
    WriteResult result = append(row, *record);
    m_copies[row] = key = record->key;
    for (const Referrer& part : partsOf(m_source, row)) {
        if (!result.isStored())
            break;
        const RowArray& parts = m_source.table(part.table->type).rows();
        const auto copied = parts.copyOf(parts.find(part.key));
        part.column->integerIn(copied.get()) = record->key;
        result = append({part.table->type, part.key}, *copied);
    }
    return result;
}

WriteResult IndependentCopy::append(RowRef row, StructRecord& record) {
    record.key = 0;
    WriteResult result = copyTargets(row, record);
    return result.isStored() ? m_databases.appendStored(row.table, record) : result;
}

// References form no circle between tables, so this ends.
WriteResult IndependentCopy::copyTargets(RowRef row, StructRecord& record) {
    WriteResult result;
    for (const Column& column : findTable(row.table)->columns) {
        if (!column.isReference() || column.role != eReferenceRole::kUses ||
            !findTable(column.target)->isMadeToBeUsed())
            continue;
        std::int32_t& cell = column.integerIn(&record);
        const RowRef target{column.target, cell};
        const StructRecord* used = m_source.table(target.table).find(KorOdbcKey(target.key));
        if (!used)
            continue; // it stays as it is, and is reported by the check
        if (const auto known = m_copies.find(target); known != m_copies.end())
            cell = known->second;
        else if (result = copy(target, freeName(m_source, target.table, used->name), cell);
                 !result.isStored())
            break;
    }
    return result;
}
