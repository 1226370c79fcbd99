#include "data/pending/PendingReplay.h"

#include "base/Translation.h"
#include "data/FreeName.h"
#include "data/exchange/MasterNumbers.h"

#include <algorithm>
#include <limits>

// The part of PendingReplay that makes new rows and changed cells anew.

namespace {

std::int32_t keyIn(const CellValue& reference) {
    return static_cast<std::int32_t>(std::get<std::int64_t>(reference));
}

} // namespace

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending)
    : PendingReplay(source, pending, pending) {}

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending, PendingLog& lost)
    : m_source(source), m_pending(pending), m_replacesPending(&lost == &pending) {
    for (const TableSchema& table : allTables()) {
        if (!lost.hasPending(source.id(), table.type))
            continue;
        const auto rows = table.makeRows();
        const TableChange net = lost.netChange(source.id(), table.type);
        Change& change = m_changes.emplace_back();
        change.table = table.type;
        change.cells = net.cells;
        for (const StructRecord* record : net.appended)
            change.appended.push_back(rows->copyOf(record));
        for (const StructRecord* record : net.deleted)
            change.deleted.push_back(rows->copyOf(record));
    }
    if (!m_replacesPending) { // the tables do not show what another run left
        noteUnstored();
        return;
    }
    for (const Change& change : m_changes) {
        for (const CellChange& cell : change.cells) {
            remember({change.table, cell.key});
            if (cell.column->isReference())
                remember({cell.column->target, keyIn(cell.wanted)});
        }
        for (const auto& record : change.appended)
            rememberOddReferences(*findTable(change.table), *record);
    }
}

// Cells that another run left changed are compared with what is stored, whatever is pending in them by now.
void PendingReplay::noteUnstored() {
    for (const Change& change : m_changes)
        for (const CellChange& cell : m_pending.netChange(m_source.id(), change.table).cells)
            m_stored[{{change.table, cell.key}, cell.column}] = cell.stored;
}

void PendingReplay::remember(RowRef row) {
    if (m_before.contains(row) || !m_source.isRead(*findTable(row.table)))
        return;
    const StyleTable& table = m_source.table(row.table);
    if (const StructRecord* record = table.find(KorOdbcKey(row.key)))
        m_before[row] = table.rows().copyOf(record);
}

std::shared_ptr<const StructRecord> PendingReplay::remembered(RowRef row) const {
    const auto it = m_before.find(row);
    return it == m_before.end() ? nullptr : it->second;
}

// What a copy refers to may have been missing all the time.
void PendingReplay::rememberOddReferences(const TableSchema& table, const StructRecord& record) {
    for (const Column& column : table.columns) {
        if (!column.isReference())
            continue;
        const RowRef target{column.target, column.integerIn(&record)};
        remember(target);
        if (m_source.isRead(*findTable(target.table)) &&
            !m_source.table(target.table).find(KorOdbcKey(target.key)))
            m_odd.insert(target);
    }
}

namespace {

using Types = std::set<eTableType>;

bool isPartColumn(const Column& column) {
    return column.isReference() && column.role == eReferenceRole::kPartOf;
}

void addWholes(const TableSchema& table, Types& types) {
    for (const Column& column : table.columns)
        if (isPartColumn(column) && types.insert(column.target).second)
            addWholes(*findTable(column.target), types);
}

// What tells whether rows of the table are in use, and what their parts are.
void addReferring(eTableType target, Types& types, Types& seen) {
    if (!seen.insert(target).second)
        return;
    for (const TableSchema& table : allTables())
        for (const Column& column : table.columns) {
            if (!column.isReference() || column.target != target)
                continue;
            types.insert(table.type);
            addWholes(table, types);
            if (isPartColumn(column))
                addReferring(table.type, types, seen);
        }
}

} // namespace

std::set<eTableType> PendingReplay::tables() const {
    Types types;
    Types seen;
    for (const Change& change : m_changes) {
        types.insert(change.table);
        for (const Column& column : findTable(change.table)->columns)
            if (column.isReference())
                types.insert(column.target);
        if (!change.deleted.empty())
            addReferring(change.table, types, seen);
    }
    return types;
}

StoreResult PendingReplay::readAnew() {
    return m_source.readAnew(tables());
}

StoreResult PendingReplay::read() {
    for (const eTableType type : tables())
        if (const StoreResult result = m_source.readingOf(type); !result)
            return result;
    return {};
}

std::vector<OutsideConflict> PendingReplay::run() {
    giveKeys();
    leavePartsOfNothing();
    m_pending.beginGroup({});
    if (m_replacesPending)
        m_pending.forget(m_source.id());
    insertRows();
    for (const Change& change : m_changes)
        for (const CellChange& cell : change.cells)
            writeCell(change.table, cell);
    settleNames();
    log();
    removeRows();
    m_pending.endGroup();
    return std::move(m_conflicts);
}

void PendingReplay::giveKeys() {
    for (Change& change : m_changes) {
        const StyleTable& table = m_source.table(change.table);
        std::erase_if(change.appended, [&](const auto& record) {
            const StructRecord* stored = table.find(KorOdbcKey(record->key));
            return stored && table.rows().equal(*stored, *record);
        });
        constexpr std::int64_t kNoMore = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
        const std::int32_t unused = table.unusedKey();
        std::int64_t next = unused > 0 ? unused : kNoMore;
        for (const auto& record : change.appended)
            next = std::max(next, std::int64_t{record->key} + 1);
        for (const auto& record : change.appended) {
            const RowRef before{change.table, record->key};
            const bool isTaken = table.find(KorOdbcKey(record->key));
            if (isTaken && next < kNoMore)
                record->key = static_cast<std::int32_t>(next++);
            else if (isTaken)
                record->key = 0;
            m_newKeys[before] = record->key;
            m_appended.insert({change.table, record->key});
        }
    }
    for (const Change& change : m_changes)
        for (const auto& record : change.appended)
            followKeys(*findTable(change.table), *record);
}

// Nothing that was stored could refer to the keys of rows that were not stored yet, so every pending
// reference to such a key means the appended row.
void PendingReplay::followKeys(const TableSchema& table, StructRecord& record) const {
    for (const Column& column : table.columns) {
        if (!column.isReference())
            continue;
        std::int32_t& key = column.integerIn(&record);
        if (const auto it = m_newKeys.find({column.target, key}); it != m_newKeys.end())
            key = it->second;
    }
}

CellValue PendingReplay::followed(const CellChange& cell) const {
    if (!cell.column->isReference())
        return cell.wanted;
    const auto it = m_newKeys.find({cell.column->target, keyIn(cell.wanted)});
    return it == m_newKeys.end() ? cell.wanted : CellValue(std::int64_t{it->second});
}

// The column that makes the row a part of one that is gone, or null.
const Column* PendingReplay::missingWhole(const TableSchema& table, const StructRecord& record) const {
    const auto it = std::ranges::find_if(table.columns, [&](const Column& column) {
        return isPartColumn(column) && !m_appended.contains({column.target, column.integerIn(&record)}) &&
               !m_source.table(column.target).find(KorOdbcKey(column.integerIn(&record)));
    });
    return it == table.columns.end() ? nullptr : &*it;
}

OutsideConflict& PendingReplay::addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                            std::shared_ptr<const StructRecord> record) {
    OutsideConflict& conflict = m_conflicts.emplace_back();
    conflict.kind = kind;
    conflict.table = findTable(row.table);
    conflict.key = row.key;
    conflict.column = column;
    conflict.record = std::move(record);
    return conflict;
}

void PendingReplay::setMine(OutsideConflict& conflict, const CellValue& mine) const {
    conflict.mine = mine;
    if (conflict.column->isReference())
        if (const auto target = remembered({conflict.column->target, keyIn(mine)}))
            conflict.targetName = target->name;
}

// A row that cannot be appended takes those with it that are parts of it.
void PendingReplay::leavePartsOfNothing() {
    for (bool again = true; again;) {
        again = false;
        for (Change& change : m_changes)
            std::erase_if(change.appended, [&](const std::shared_ptr<StructRecord>& record) {
                const Column* missing = missingWhole(*findTable(change.table), *record);
                if (record->key > 0 && !missing)
                    return false;
                m_appended.erase({change.table, record->key});
                OutsideConflict& conflict =
                    addConflict(OutsideConflict::eKind::kGone, {change.table, record->key}, nullptr, record);
                if (missing)
                    if (const auto whole = remembered({missing->target, missing->integerIn(record.get())}))
                        conflict.wholeName = whole->name;
                return again = true;
            });
    }
}

namespace {

KorString whyRefused(eCellFault fault) {
    switch (fault) {
    case eCellFault::kNone:
        return {};
    case eCellFault::kNameTaken:
        return translated("Another record has this name now.");
    case eCellFault::kNoTarget:
    case eCellFault::kNoWhole:
        return translated("The record that it refers to was deleted.");
    default:
        return translated("The column does not take this value.");
    }
}

} // namespace

// A new row stays without what was deleted meanwhile.
void PendingReplay::leaveLostReferences(const TableSchema& table,
                                        const std::shared_ptr<StructRecord>& record) {
    for (const Column& column : table.columns) {
        if (!column.isReference() || isPartColumn(column))
            continue;
        std::int32_t& key = column.integerIn(record.get());
        const RowRef target{column.target, key};
        if (key <= 0 || m_appended.contains(target) || m_odd.contains(target) ||
            m_source.table(target.table).find(KorOdbcKey(key)))
            continue;
        OutsideConflict& conflict =
            addConflict(OutsideConflict::eKind::kCell, {table.type, record->key}, &column, record);
        setMine(conflict, std::int64_t{key});
        conflict.reason = whyRefused(eCellFault::kNoTarget);
        key = 0;
    }
}

void PendingReplay::insertRows() {
    std::optional<MasterNumbers> numbers; // as stored
    for (const Change& change : m_changes)
        for (const auto& record : change.appended) {
            leaveLostReferences(*findTable(change.table), record);
            if (change.table == kTableDetailMaster) {
                if (!numbers)
                    numbers.emplace(m_source);
                auto& master = static_cast<StructDetailMaster&>(*record);
                master.number = numbers->take(master);
            }
            m_source.insert(change.table, *record);
        }
}

void PendingReplay::writeCell(eTableType type, const CellChange& cell) {
    const StyleTable& table = m_source.table(type);
    const RowRef ref{type, cell.key};
    const KorOdbcKey key(cell.key);
    const StructRecord* row = table.find(key);
    const CellValue mine = followed(cell);
    if (!row) {
        setMine(addConflict(OutsideConflict::eKind::kGone, ref, cell.column, remembered(ref)), mine);
        return;
    }
    const CellValue before = cell.column->read(row);
    if (before == mine)
        return;
    const auto unstored = m_stored.find({ref, cell.column});
    const CellValue stored = unstored == m_stored.end() ? before : unstored->second;
    const bool isName = cell.column->number == 1; // judged when all have theirs
    const eCellFault fault =
        isName ? eCellFault::kNone : faultOf(m_source, table.schema(), *cell.column, cell.key, mine);
    if (stored != cell.stored || fault != eCellFault::kNone) {
        OutsideConflict& conflict =
            addConflict(OutsideConflict::eKind::kCell, ref, cell.column, table.rows().copyOf(row));
        conflict.stored = stored;
        setMine(conflict, mine);
        conflict.reason = whyRefused(fault);
        return;
    }
    m_source.setCell(type, key, *cell.column, mine);
    m_written.push_back({type, key, cell.column, before});
}

// A name that cannot be given leaves the old one, which another row may have got meanwhile.
void PendingReplay::settleNames() {
    for (bool again = true; again;) {
        again = false;
        std::erase_if(m_written, [&](const Written& written) {
            const StyleTable& table = m_source.table(written.table);
            const StructRecord* row = table.find(written.key);
            if (written.column->number != 1 || faultOf(m_source, table.schema(), *written.column, written.key,
                                                       row->name) == eCellFault::kNone)
                return false;
            const CellValue mine = row->name;
            m_source.setCell(written.table, written.key, *written.column, written.before);
            OutsideConflict& conflict =
                addConflict(OutsideConflict::eKind::kCell, {written.table, written.key}, written.column,
                            table.rows().copyOf(table.find(written.key)));
            conflict.stored = written.before;
            conflict.mine = mine;
            conflict.reason = whyRefused(eCellFault::kNameTaken);
            return again = true;
        });
    }
    renameAppended();
    for (OutsideConflict& conflict : m_conflicts)
        if (conflict.kind == OutsideConflict::eKind::kCell && conflict.column->number == 1 &&
            conflict.reason.isEmpty())
            conflict.reason = whyRefused(
                faultOf(m_source, *conflict.table, *conflict.column, conflict.key, *conflict.mine));
}

// A new row stays, under another name.
void PendingReplay::renameAppended() {
    for (const Change& change : m_changes)
        for (const auto& record : change.appended) {
            const TableSchema& table = *findTable(change.table);
            const Column& name = *table.column(1);
            if (faultOf(m_source, table, name, record->key, record->name) != eCellFault::kNameTaken)
                continue;
            OutsideConflict& conflict =
                addConflict(OutsideConflict::eKind::kCell, {table.type, record->key}, &name, record);
            conflict.mine = record->name;
            record->name = freeName(m_source, table.type, record->name);
            m_source.setCell(table.type, KorOdbcKey(record->key), name, record->name);
            conflict.reason = KorString::format(
                translated("Another record has this name now, so the new one is called \"%s\"."),
                {record->name});
        }
}

void PendingReplay::log() {
    using enum PendingStep::eAction;
    for (const Change& change : m_changes)
        for (const auto& record : change.appended)
            m_pending.record({m_source.id(), change.table, kAppend, record->key, nullptr, {}, {}, record});
    for (const Written& written : m_written)
        m_pending.record({m_source.id(),
                          written.table,
                          kCell,
                          written.key,
                          written.column,
                          written.before,
                          written.column->read(m_source.table(written.table).find(written.key)),
                          {}});
}
