#include "data/pending/ReplayedDeletions.h"

#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/RowUsers.h"

#include <algorithm>

namespace {

bool belongs(const Column& column) {
    return column.isReference() &&
           (column.role == eReferenceRole::kPartOf || column.role == eReferenceRole::kIdentifies);
}

} // namespace

void ReplayedDeletions::run() {
    std::set<RowRef> going = wholesToRemove();
    if (going.empty())
        return;
    if (const Result<> whole = m_state.source.complete(); !whole) {
        for (const RowRef row : going)
            refuse(row, KorString(whole.error));
        return;
    }
    leaveOthers(going);
    leaveThoseInUse(going);
    askOfChanged(going);
    for (const RowRef row : going) {
        for (const RowRef other : identifying(row))
            removeWhole(other);
        removeWhole(row);
    }
}

void ReplayedDeletions::refuse(RowRef row, const KorString& reason) {
    const StyleTable& table = m_state.source.table(row.table);
    m_state
        .addConflict(OutsideConflict::eKind::kDelete, row, nullptr,
                     table.rows().copyOf(table.find(KorOdbcKey(row.key))))
        .reason = reason;
}

// Deleted rows that are still there, without those that go with another one or stay with it.
std::set<RowRef> ReplayedDeletions::wholesToRemove() const {
    std::set<RowRef> wholes;
    for (const auto& [row, record] : m_state.deleted) {
        const StructRecord* deleted = record.get();
        const bool isWithOther =
            std::ranges::any_of(findTable(row.table)->columns, [&](const Column& column) {
                return belongs(column) &&
                       m_state.deleted.contains({column.target, column.integerIn(deleted)}) &&
                       m_state.source.table(column.target).find(KorOdbcKey(column.integerIn(deleted)));
            });
        if (!isWithOther && m_state.source.table(row.table).find(KorOdbcKey(row.key)))
            wholes.insert(row);
    }
    return wholes;
}

// Neither a record that got the key of one that is gone nor a part that has an owner by now was meant.
void ReplayedDeletions::leaveOthers(std::set<RowRef>& going) {
    std::erase_if(going, [&](const RowRef& row) {
        const bool isOwned = m_state.orphans.contains(row) && wholeOf(m_state.source, row) != row;
        if (m_state.rowsBefore.isOther(row))
            refuse(row, translated("It is a new record, or it was renamed and changed."));
        else if (isOwned)
            refuse(row, translated("It belongs to a record now."));
        return isOwned || m_state.rowsBefore.isOther(row);
    });
}

std::vector<RowRef> ReplayedDeletions::identifying(RowRef row) const {
    std::vector<RowRef> rows;
    if (m_state.identified.contains(row))
        for (const Referrer& referrer : m_state.source.referrersOf(row.table, KorOdbcKey(row.key)))
            if (referrer.column->role == eReferenceRole::kIdentifies)
                rows.push_back({referrer.table->type, referrer.key});
    return rows;
}

// The records that use a row or are filed in it, each as what it belongs to.
std::vector<RowRef> ReplayedDeletions::usersOf(RowRef row) const {
    std::vector<RowRef> users;
    for (const Referrer& referrer : m_state.source.referrersOf(row.table, KorOdbcKey(row.key))) {
        if (belongs(*referrer.column))
            continue;
        RowRef user = wholeOf(m_state.source, {referrer.table->type, referrer.key});
        for (const Column& column : findTable(user.table)->columns) {
            if (!column.isReference() || column.role != eReferenceRole::kIdentifies)
                continue;
            const RowRef target{
                column.target, column.integerIn(m_state.source.table(user.table).find(KorOdbcKey(user.key)))};
            if (m_state.identified.contains(target) &&
                m_state.source.table(target.table).find(KorOdbcKey(target.key)))
                user = target;
        }
        if (user != row)
            users.push_back(user);
    }
    return users;
}

// What is kept uses others, which must be kept then.
void ReplayedDeletions::leaveThoseInUse(std::set<RowRef>& going) {
    for (bool again = true; again;) {
        again = false;
        std::erase_if(going, [&](const RowRef& row) {
            const bool isUsed =
                std::ranges::any_of(usersOf(row), [&](const RowRef& user) { return !going.contains(user); });
            if (isUsed)
                refuse(row, translated("Another record uses it now."));
            again = again || isUsed;
            return isUsed;
        });
    }
}

// What is not as it was when it was deleted stays until the user has chosen, and what it uses stays with it.
void ReplayedDeletions::askOfChanged(std::set<RowRef>& going) {
    std::map<RowRef, std::vector<std::size_t>> asked; // conflicts with which rows go or stay
    for (const RowRef row : going) {
        if (!isChanged(row))
            continue;
        const StyleTable& table = m_state.source.table(row.table);
        const StructRecord* record = table.find(KorOdbcKey(row.key));
        asked[row] = {m_state.conflicts.size()};
        OutsideConflict& conflict = m_state.addConflict(OutsideConflict::eKind::kDelete, row,
                                                        changedColumn(row), table.rows().copyOf(record));
        conflict.identifying = identifying(row);
        if (conflict.column)
            conflict.stored = conflict.column->read(record);
    }
    std::erase_if(going, [&](const RowRef& row) { return asked.contains(row); });
    addUsed(going, asked);
}

void ReplayedDeletions::addUsed(std::set<RowRef>& going, std::map<RowRef, std::vector<std::size_t>>& asked) {
    for (bool again = !asked.empty(); again;) {
        again = false;
        std::erase_if(going, [&](const RowRef& row) {
            std::set<std::size_t> conflicts;
            for (const RowRef& user : usersOf(row))
                if (const auto it = asked.find(user); it != asked.end())
                    conflicts.insert(it->second.begin(), it->second.end());
            if (conflicts.empty())
                return false;
            for (const std::size_t conflict : conflicts)
                m_state.conflicts[conflict].used.push_back(row);
            asked[row].assign(conflicts.begin(), conflicts.end());
            return again = true;
        });
    }
}

const Column* ReplayedDeletions::changedColumn(RowRef row) const {
    const StructRecord* before = m_state.deleted.at(row).get();
    const auto& columns = findTable(row.table)->columns;
    const auto changed = std::ranges::find_if(
        columns, [&](const Column& column) { return m_state.storedIn(row, column) != column.read(before); });
    return changed == columns.end() ? nullptr : &*changed;
}

// Whether the row, or what goes with it, is not as it was when it was deleted.
bool ReplayedDeletions::isChanged(RowRef row) const {
    return changedColumn(row) || hasChangedParts(row) ||
           std::ranges::any_of(identifying(row), [this](const RowRef& other) {
               return !m_state.deleted.contains(other) || changedColumn(other) || hasChangedParts(other);
           });
}

bool ReplayedDeletions::hasChangedParts(RowRef row) const {
    return std::ranges::any_of(partsOf(m_state.source, row), [this](const Referrer& part) {
        const RowRef own{part.table->type, part.key};
        const auto deleted = m_state.deleted.find(own);
        const StyleTable& table = m_state.source.table(own.table);
        return deleted == m_state.deleted.end() ||
               !table.rows().equal(*table.find(KorOdbcKey(own.key)), *deleted->second) ||
               hasChangedParts(own);
    });
}

void ReplayedDeletions::removeWhole(RowRef row) {
    for (const Referrer& part : partsOf(m_state.source, row))
        removeWhole({part.table->type, part.key});
    const StyleTable& table = m_state.source.table(row.table);
    const auto copy = table.rows().copyOf(table.find(KorOdbcKey(row.key)));
    m_state.source.remove(row.table, KorOdbcKey(row.key));
    m_state.pending.record(
        {m_state.source.id(), row.table, PendingStep::eAction::kDelete, row.key, nullptr, {}, {}, copy});
}
