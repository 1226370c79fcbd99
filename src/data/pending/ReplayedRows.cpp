#include "data/pending/ReplayedRows.h"

#include "base/Translation.h"
#include "data/CellRules.h"
#include "data/FreeName.h"
#include "data/exchange/MasterNumbers.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace {

bool belongs(const Column& column) {
    return column.isReference() &&
           (column.role == eReferenceRole::kPartOf || column.role == eReferenceRole::kIdentifies);
}

} // namespace

// A whole is there already when all that was appended with it is.
void ReplayedRows::leaveStored() {
    std::map<RowRef, RowRef> wholes; // of rows that were appended
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended) {
            RowRef& whole = wholes[{change.table, record->key}] = {change.table, record->key};
            for (const Column& column : findTable(change.table)->columns)
                if (belongs(column))
                    whole = {column.target, column.integerIn(record.get())};
        }
    const auto topOf = [&](RowRef row) {
        for (auto it = wholes.find(row); it != wholes.end(); it = wholes.find(row)) {
            if (!wholes.contains(it->second) || it->second == row)
                break;
            row = it->second;
        }
        return row;
    };
    std::set<RowRef> missing;
    for (const ReplayState::Change& change : m_state.changes) {
        const StyleTable& table = m_state.source.table(change.table);
        for (const auto& record : change.appended) {
            const StructRecord* stored = table.find(KorOdbcKey(record->key));
            if (!stored || !table.rows().equal(*stored, *record))
                missing.insert(topOf({change.table, record->key}));
        }
    }
    for (ReplayState::Change& change : m_state.changes)
        std::erase_if(change.appended, [&](const auto& record) {
            return !missing.contains(topOf({change.table, record->key}));
        });
}

// The next key that neither a stored nor an appended row of the table has, or -1.
std::int32_t ReplayedRows::takeKey(eTableType type) {
    constexpr std::int64_t kNoMore = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    const auto [it, isNew] = m_nextKeys.try_emplace(type);
    std::int64_t& next = it->second;
    if (isNew) {
        const std::int32_t unused = m_state.source.table(type).unusedKey();
        next = unused > 0 ? unused : kNoMore;
        for (const ReplayState::Change& change : m_state.changes)
            if (change.table == type)
                for (const auto& record : change.appended)
                    next = std::max(next, std::int64_t{record->key} + 1);
    }
    return next < kNoMore ? static_cast<std::int32_t>(next++) : -1;
}

void ReplayedRows::giveKeys() {
    for (ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended) {
            const RowRef before{change.table, record->key};
            if (m_state.source.table(change.table).find(KorOdbcKey(record->key)))
                record->key = takeKey(change.table);
            m_state.newKeys[before] = record->key;
            m_state.appended[{change.table, record->key}] = record;
        }
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended)
            followKeys(*findTable(change.table), *record);
}

// Nothing that was stored could refer to the keys of rows that were not stored yet, so every pending
// reference to such a key means the appended row.
void ReplayedRows::followKeys(const TableSchema& table, StructRecord& record) const {
    for (const Column& column : table.columns) {
        if (!column.isReference())
            continue;
        std::int32_t& key = column.integerIn(&record);
        if (const auto it = m_state.newKeys.find({column.target, key}); it != m_state.newKeys.end())
            key = it->second;
    }
}

// The column that makes the row belong to one that is gone, or null.
const Column* ReplayedRows::missingWhole(const TableSchema& table, const StructRecord& record) const {
    const auto it = std::ranges::find_if(table.columns, [&](const Column& column) {
        return belongs(column) && m_state.isLost({column.target, column.integerIn(&record)});
    });
    return it == table.columns.end() ? nullptr : &*it;
}

// A row that cannot be appended takes those with it that belong to it.
void ReplayedRows::leavePartsOfNothing() {
    for (bool again = true; again;) {
        again = false;
        for (ReplayState::Change& change : m_state.changes)
            std::erase_if(change.appended, [&](const std::shared_ptr<StructRecord>& record) {
                const Column* missing = missingWhole(*findTable(change.table), *record);
                if (record->key > 0 && !missing)
                    return false;
                m_state.appended.erase({change.table, record->key});
                OutsideConflict& conflict = m_state.addConflict(OutsideConflict::eKind::kGone,
                                                                {change.table, record->key}, nullptr, record);
                if (missing)
                    conflict.wholeName =
                        m_state.rowsBefore.nameOf({missing->target, missing->integerIn(record.get())});
                return again = true;
            });
    }
}

// What is filed in no group is found nowhere.
void ReplayedRows::keepGroups() {
    std::vector<std::pair<const Column*, std::shared_ptr<StructRecord>>> filed;
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended)
            for (const Column& column : findTable(change.table)->columns)
                if (column.isReference() && column.role == eReferenceRole::kFiledUnder &&
                    m_state.isLost({column.target, column.integerIn(record.get())}))
                    filed.emplace_back(&column, record);
    for (const auto& [column, record] : filed) {
        std::int32_t& key = column->integerIn(record.get());
        const RowRef group{column->target, key};
        if (!m_state.newKeys.contains(group))
            m_state.newKeys[group] = groupInstead(group);
        key = m_state.newKeys[group] > 0 ? m_state.newKeys[group] : key;
    }
}

// The key of the group of the same name, or of one that is appended again; -1 where none can be.
std::int32_t ReplayedRows::groupInstead(RowRef group) {
    const StyleTable& table = m_state.source.table(group.table);
    const auto shown = m_state.rowsBefore.shown(group);
    const KorString name = m_state.rowsBefore.nameOf(group);
    if (const StructRecord* namesake = name.isEmpty() ? nullptr : table.find(name))
        return namesake->key;
    const std::int32_t key = table.find(KorOdbcKey(group.key)) ? takeKey(group.table) : group.key;
    if (key < 0)
        return key;
    const auto record = table.rows().copyOf(shown.get());
    record->key = key;
    record->name = name.isEmpty() ? freeName(m_state.source, group.table, {}) : name;
    m_state.appended[{group.table, key}] = record;
    auto change = std::ranges::find(m_state.changes, group.table, &ReplayState::Change::table);
    if (change == m_state.changes.end())
        change = m_state.changes.insert(m_state.changes.end(), ReplayState::Change{group.table, {}, {}, {}});
    change->appended.push_back(record);
    OutsideConflict& conflict =
        m_state.addConflict(OutsideConflict::eKind::kGone, {group.table, key}, nullptr, record);
    conflict.reason =
        translated("It was deleted meanwhile, but new records are filed in it, so it is made again.");
    conflict.isMade = true;
    return key;
}

// A new row stays without what was deleted meanwhile.
void ReplayedRows::leaveLostReferences(const TableSchema& table,
                                       const std::shared_ptr<StructRecord>& record) {
    for (const Column& column : table.columns) {
        if (!column.isReference() || belongs(column))
            continue;
        std::int32_t& key = column.integerIn(record.get());
        if (!m_state.isLost({column.target, key}))
            continue;
        OutsideConflict& conflict =
            m_state.addConflict(OutsideConflict::eKind::kCell, {table.type, record->key}, &column, record);
        conflict.mine = std::int64_t{key};
        conflict.targetName = m_state.targetName(column, *conflict.mine);
        conflict.reason =
            translated("The record that it refers to was deleted, so the new one is made without it.");
        conflict.isMade = true;
        key = 0;
    }
}

void ReplayedRows::insert() {
    std::optional<MasterNumbers> numbers; // as stored
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended) {
            leaveLostReferences(*findTable(change.table), record);
            if (change.table == kTableDetailMaster) {
                if (!numbers)
                    numbers.emplace(m_state.source);
                auto& master = static_cast<StructDetailMaster&>(*record);
                master.number = numbers->take(master);
            }
            m_state.source.insert(change.table, *record);
        }
}

// A new row stays, under another name.
void ReplayedRows::rename() {
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended) {
            const TableSchema& table = *findTable(change.table);
            const Column& name = *table.column(1);
            if (faultOf(m_state.source, table, name, record->key, record->name) != eCellFault::kNameTaken)
                continue;
            const KorString before = record->name;
            OutsideConflict& conflict =
                m_state.addConflict(OutsideConflict::eKind::kCell, {table.type, record->key}, &name, record);
            conflict.mine = before;
            record->name = freeName(m_state.source, table.type, before);
            m_state.source.setCell(table.type, KorOdbcKey(record->key), name, record->name);
            conflict.reason = KorString::format(
                translated("Another record has this name now, so the new one is called \"%s\"."),
                {record->name});
            conflict.isMade = true;
            renameIdentifying({table.type, record->key}, before, record->name);
        }
}

void ReplayedRows::renameIdentifying(RowRef row, const KorString& before, const KorString& after) {
    for (const Referrer& referrer : m_state.source.referrersOf(row.table, KorOdbcKey(row.key))) {
        const auto appended = m_state.appended.find({referrer.table->type, referrer.key});
        if (referrer.column->role != eReferenceRole::kIdentifies || appended == m_state.appended.end() ||
            appended->second->name != before)
            continue;
        appended->second->name = after;
        m_state.source.setCell(referrer.table->type, KorOdbcKey(referrer.key), *referrer.table->column(1),
                               after);
    }
}

void ReplayedRows::log() {
    for (const ReplayState::Change& change : m_state.changes)
        for (const auto& record : change.appended)
            m_state.pending.record({m_state.source.id(),
                                    change.table,
                                    PendingStep::eAction::kAppend,
                                    record->key,
                                    nullptr,
                                    {},
                                    {},
                                    record});
}
