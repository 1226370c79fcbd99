#include "data/pending/RowsBefore.h"

#include <algorithm>

void RowsBefore::remember(RowRef row) {
    const auto known = m_rows.find(row);
    if ((known != m_rows.end() && known->second.shown) || !m_source.isRead(*findTable(row.table)))
        return;
    const StyleTable& table = m_source.table(row.table);
    if (const StructRecord* record = table.find(KorOdbcKey(row.key)))
        m_rows[row].shown = table.rows().copyOf(record);
}

void RowsBefore::noteStored(RowRef row, const Column& column, const CellValue& stored) {
    const auto it = m_rows.find(row);
    if (it == m_rows.end() || !it->second.shown)
        return;
    Known& known = it->second;
    if (!known.stored)
        known.stored = m_source.table(row.table).rows().copyOf(known.shown.get());
    column.write(known.stored.get(), stored);
}

void RowsBefore::noteDeleted(const TableSchema& table, const StructRecord& stored) {
    m_rows[{table.type, stored.key}].stored = table.makeRows()->copyOf(&stored);
    for (const Column& column : table.columns)
        if (column.isReference() && column.role == eReferenceRole::kIdentifies)
            m_rows[{column.target, column.integerIn(&stored)}].users.push_back(
                {{table.type, stored.key}, &column, stored.name});
}

void RowsBefore::noteUsers() {
    const auto isWhollyRead = [this](eTableType target) {
        return std::ranges::all_of(allTables(), [&](const TableSchema& table) {
            return std::ranges::find(table.columns, target, &Column::target) == table.columns.end() ||
                   m_source.isRead(table);
        });
    };
    std::map<eTableType, bool> isRead;
    for (auto& [row, known] : m_rows) {
        if (!known.shown)
            continue;
        const auto [it, isNew] = isRead.try_emplace(row.table);
        if (isNew)
            it->second = isWhollyRead(row.table);
        if (!it->second)
            continue;
        for (const Referrer& user : m_source.referrersOf(row.table, KorOdbcKey(row.key))) {
            const RowRef ref{user.table->type, user.key};
            const StructRecord* before = stored(ref);
            if (!before)
                before = m_source.table(ref.table).find(KorOdbcKey(ref.key));
            if (user.column->role == eReferenceRole::kUses ||
                user.column->role == eReferenceRole::kIdentifies)
                known.users.push_back({ref, user.column, before->name});
        }
    }
}

void RowsBefore::compare() {
    for (const auto& [row, known] : m_rows)
        if (hasOtherRecord(row, known))
            m_others.insert(row);
}

bool RowsBefore::hasOtherRecord(RowRef row, const Known& known) const {
    const StyleTable& table = m_source.table(row.table);
    const StructRecord* now = table.find(KorOdbcKey(row.key));
    const StructRecord* before = known.before();
    if (!before || !now || now->name == before->name)
        return false;
    const auto isLeft = [&](const Column& column) { return column.read(now) == column.read(before); };
    for (const Column& column : table.schema().columns)
        if (column.isReference() && column.role == eReferenceRole::kIdentifies && isLeft(column))
            if (const auto it = m_rows.find({column.target, column.integerIn(now)}); it != m_rows.end())
                return hasOtherRecord(it->first, it->second);
    const bool isRenamed = std::ranges::all_of(
        table.schema().columns, [&](const Column& column) { return column.number == 1 || isLeft(column); });
    return !isRenamed && !isStillUsed(known, row.key);
}

bool RowsBefore::isStillUsed(const Known& known, std::int32_t key) const {
    return std::ranges::any_of(known.users, [&](const User& user) {
        const StructRecord* now = m_source.table(user.row.table).find(KorOdbcKey(user.row.key));
        return now && now->name == user.name && user.column->integerIn(now) == key;
    });
}

std::shared_ptr<const StructRecord> RowsBefore::shown(RowRef row) const {
    const auto it = m_rows.find(row);
    return it == m_rows.end() ? nullptr : it->second.shown;
}

KorString RowsBefore::nameOf(RowRef row) const {
    if (const auto record = shown(row))
        return record->name;
    const auto it = m_names.find(row);
    return it == m_names.end() ? KorString() : it->second;
}

const StructRecord* RowsBefore::stored(RowRef row) const {
    const auto it = m_rows.find(row);
    return it == m_rows.end() ? nullptr : it->second.before();
}

bool RowsBefore::isGone(RowRef row) const {
    return isOther(row) || !m_source.table(row.table).find(KorOdbcKey(row.key));
}
