#include "data/RowClosure.h"
#include "data/RowUsers.h"
#include "data/pending/PendingReplay.h"

#include "base/Translation.h"

#include <algorithm>

// The part of PendingReplay that deletes rows anew, each with its parts.

void PendingReplay::removeRows() {
    for (const Change& change : m_changes)
        for (const auto& record : change.deleted)
            m_deleted[{change.table, record->key}] = record;
    std::set<RowRef> going = wholesToRemove();
    leaveThoseInUse(going);
    for (const RowRef row : going)
        if (!addChanged(row))
            removeWhole(row);
}

// Deleted rows that are still there, without parts that go with their whole or stay with it.
std::set<RowRef> PendingReplay::wholesToRemove() const {
    std::set<RowRef> wholes;
    for (const auto& [row, record] : m_deleted) {
        const bool isPart = std::ranges::any_of(findTable(row.table)->columns, [&](const Column& column) {
            return column.isReference() && column.role == eReferenceRole::kPartOf &&
                   m_deleted.contains({column.target, column.integerIn(record.get())}) &&
                   m_source.table(column.target).find(KorOdbcKey(column.integerIn(record.get())));
        });
        if (!isPart && m_source.table(row.table).find(KorOdbcKey(row.key)))
            wholes.insert(row);
    }
    return wholes;
}

bool PendingReplay::isGoing(RowRef row, const std::set<RowRef>& going) const {
    return going.contains(row) || going.contains(wholeOf(m_source, row));
}

// What is kept uses others, which must be kept then.
void PendingReplay::leaveThoseInUse(std::set<RowRef>& going) {
    for (bool again = true; again;) {
        again = false;
        std::erase_if(going, [&](const RowRef& row) {
            const bool isUsed = std::ranges::any_of(m_source.referrersOf(row.table, KorOdbcKey(row.key)),
                                                    [&](const auto& user) {
                                                        return user.column->role == eReferenceRole::kUses &&
                                                               !isGoing({user.table->type, user.key}, going);
                                                    });
            if (!isUsed)
                return false;
            const StyleTable& table = m_source.table(row.table);
            addConflict(OutsideConflict::eKind::kDelete, row, nullptr,
                        table.rows().copyOf(table.find(KorOdbcKey(row.key))))
                .reason = translated("Another record uses it now.");
            return again = true;
        });
    }
}

// Whether the row, or what it consists of, is not as it was when it was deleted.
bool PendingReplay::addChanged(RowRef ref) {
    const StyleTable& table = m_source.table(ref.table);
    const StructRecord* row = table.find(KorOdbcKey(ref.key));
    const StructRecord* before = m_deleted.at(ref).get();
    const auto& columns = table.schema().columns;
    const auto changed = std::ranges::find_if(columns, [&](const Column& column) {
        const auto unstored = m_stored.find({ref, &column});
        return (unstored == m_stored.end() ? column.read(row) : unstored->second) != column.read(before);
    });
    if (changed == columns.end() && !hasChangedParts(ref))
        return false;
    OutsideConflict& conflict =
        addConflict(OutsideConflict::eKind::kDelete, ref, changed == columns.end() ? nullptr : &*changed,
                    table.rows().copyOf(row));
    if (conflict.column)
        conflict.stored = conflict.column->read(row);
    return true;
}

bool PendingReplay::hasChangedParts(RowRef ref) const {
    return std::ranges::any_of(partsOf(m_source, ref), [this](const Referrer& part) {
        const RowRef own{part.table->type, part.key};
        const auto deleted = m_deleted.find(own);
        const StyleTable& table = m_source.table(own.table);
        return deleted == m_deleted.end() ||
               !table.rows().equal(*table.find(KorOdbcKey(own.key)), *deleted->second) ||
               hasChangedParts(own);
    });
}

void PendingReplay::removeWhole(RowRef ref) {
    for (const Referrer& part : partsOf(m_source, ref))
        removeWhole({part.table->type, part.key});
    const StyleTable& table = m_source.table(ref.table);
    const auto copy = table.rows().copyOf(table.find(KorOdbcKey(ref.key)));
    m_source.remove(ref.table, KorOdbcKey(ref.key));
    m_pending.record(
        {m_source.id(), ref.table, PendingStep::eAction::kDelete, ref.key, nullptr, {}, {}, copy});
}
