#include "data/pending/PendingReplay.h"

#include "data/pending/ReplayedCells.h"
#include "data/pending/ReplayedDeletions.h"
#include "data/pending/ReplayedRows.h"

#include <algorithm>

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending)
    : PendingReplay(source, pending, pending) {}

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending, PendingLog& lost)
    : m_state(source, pending), m_replacesPending(&lost == &pending) {
    for (const TableSchema& table : allTables()) {
        if (!lost.hasPending(source.id(), table.type))
            continue;
        const auto rows = table.makeRows();
        const TableChange net = lost.netChange(source.id(), table.type);
        ReplayState::Change& change = m_state.changes.emplace_back();
        change.table = table.type;
        change.cells = net.cells;
        for (const StructRecord* record : net.appended)
            change.appended.push_back(rows->copyOf(record));
        for (const StructRecord* record : net.deleted)
            m_state.deleted[{table.type, record->key}] = change.deleted.emplace_back(rows->copyOf(record));
    }
    for (const auto& [row, record] : m_state.deleted)
        for (const Column& column : findTable(row.table)->columns)
            if (column.isReference() && column.role == eReferenceRole::kIdentifies)
                m_state.identified.insert({column.target, column.integerIn(record.get())});
    if (m_replacesPending)
        remember();
    else
        noteUnstored(lost); // the tables do not show what another run left
}

void PendingReplay::remember() {
    for (const ReplayState::Change& change : m_state.changes) {
        const TableSchema& table = *findTable(change.table);
        for (const CellChange& cell : change.cells) {
            const RowRef row{change.table, cell.key};
            m_state.rowsBefore.remember(row);
            m_state.rowsBefore.noteStored(row, *cell.column, cell.stored);
            if (const auto shown = m_state.rowsBefore.shown(row))
                rememberReferences(table, *shown);
        }
        for (const auto& record : change.appended)
            rememberReferences(table, *record);
        for (const auto& record : change.deleted)
            m_state.rowsBefore.noteDeleted(table, *record);
    }
    m_state.rowsBefore.noteUsers();
    noteOrphans();
}

// What a copy refers to may have been missing all the time.
void PendingReplay::rememberReferences(const TableSchema& table, const StructRecord& record) {
    for (const Column& column : table.columns) {
        if (!column.isReference())
            continue;
        const RowRef target{column.target, column.integerIn(&record)};
        m_state.rowsBefore.remember(target);
        if (m_state.source.isRead(*findTable(target.table)) &&
            !m_state.source.table(target.table).find(KorOdbcKey(target.key)))
            m_state.odd.insert(target);
    }
}

void PendingReplay::noteOrphans() {
    for (const auto& [row, record] : m_state.deleted)
        for (const Column& column : findTable(row.table)->columns) {
            if (!column.isReference() || column.role != eReferenceRole::kPartOf)
                continue;
            const RowRef whole{column.target, column.integerIn(record.get())};
            if (!m_state.deleted.contains(whole) && m_state.source.isRead(*findTable(whole.table)) &&
                !m_state.source.table(whole.table).find(KorOdbcKey(whole.key)))
                m_state.orphans.insert(row);
        }
}

// Cells that another run left changed are compared with what is stored, whatever is pending in them by now.
void PendingReplay::noteUnstored(const PendingLog& lost) {
    for (const ReplayState::Change& change : m_state.changes)
        for (const CellChange& cell : m_state.pending.netChange(m_state.source.id(), change.table).cells)
            m_state.storedCells[{{change.table, cell.key}, cell.column}] = cell.stored;
    for (const auto& [place, name] : lost.names())
        if (place.first == m_state.source.id())
            m_state.rowsBefore.noteName(place.second, name);
    for (const PendingStep* step : lost.steps())
        if (step->source == m_state.source.id() && step->column && step->column->number == 1)
            m_state.rowsBefore.noteName({step->table, step->key}, std::get<KorString>(step->after));
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
    for (const ReplayState::Change& change : m_state.changes) {
        types.insert(change.table);
        for (const Column& column : findTable(change.table)->columns)
            if (column.isReference())
                types.insert(column.target);
        if (!change.deleted.empty())
            addReferring(change.table, types, seen);
    }
    return types;
}

Result<> PendingReplay::readAnew() {
    return m_state.source.readAnew(tables());
}

void PendingReplay::take(const StoredSince& since) {
    for (const ReplayState::Change& change : m_state.changes) {
        for (const CellChange& cell : change.cells)
            m_state.source.setCell(change.table, KorOdbcKey(cell.key), *cell.column, cell.stored);
        for (const auto& record : change.appended)
            m_state.source.remove(change.table, KorOdbcKey(record->key));
        for (const auto& record : change.deleted)
            m_state.source.insert(change.table, *record);
    }
    m_state.source.take(since);
}

Result<> PendingReplay::read() {
    for (const eTableType type : tables())
        if (Result<> result = m_state.source.readingOf(type); !result)
            return result;
    return {};
}

std::vector<OutsideConflict> PendingReplay::run() {
    ReplayedRows rows(m_state);
    ReplayedCells cells(m_state);
    m_state.rowsBefore.compare();
    if (!m_replacesPending)
        rows.leaveStored();
    rows.giveKeys();
    rows.leavePartsOfNothing();
    m_state.pending.beginGroup({});
    if (m_replacesPending)
        m_state.pending.forget(m_state.source.id());
    rows.keepGroups();
    rows.insert();
    cells.write();
    cells.settleNames();
    rows.rename();
    cells.tellTakenNames();
    rows.log();
    cells.log();
    ReplayedDeletions(m_state).run();
    m_state.pending.endGroup();
    return std::move(m_state.conflicts);
}
