#include "data/pending/PendingReplay.h"

#include <algorithm>

// The part of PendingReplay that takes what is to be made anew, and goes through it.

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending)
    : PendingReplay(source, pending, pending) {}

PendingReplay::PendingReplay(StyleSource& source, PendingLog& pending, PendingLog& lost)
    : m_source(source), m_pending(pending), m_replacesPending(&lost == &pending), m_before(source) {
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
            m_deleted[{table.type, record->key}] = change.deleted.emplace_back(rows->copyOf(record));
    }
    for (const auto& [row, record] : m_deleted)
        for (const Column& column : findTable(row.table)->columns)
            if (column.isReference() && column.role == eReferenceRole::kIdentifies)
                m_identified.insert({column.target, column.integerIn(record.get())});
    if (m_replacesPending)
        remember();
    else
        noteUnstored(lost); // the tables do not show what another run left
}

void PendingReplay::remember() {
    for (const Change& change : m_changes) {
        const TableSchema& table = *findTable(change.table);
        for (const CellChange& cell : change.cells) {
            const RowRef row{change.table, cell.key};
            m_before.remember(row);
            m_before.noteStored(row, *cell.column, cell.stored);
            if (const auto shown = m_before.shown(row))
                rememberReferences(table, *shown);
        }
        for (const auto& record : change.appended)
            rememberReferences(table, *record);
        for (const auto& record : change.deleted)
            m_before.noteDeleted(table, *record);
    }
    m_before.noteUsers();
    noteOrphans();
}

// What a copy refers to may have been missing all the time.
void PendingReplay::rememberReferences(const TableSchema& table, const StructRecord& record) {
    for (const Column& column : table.columns) {
        if (!column.isReference())
            continue;
        const RowRef target{column.target, column.integerIn(&record)};
        m_before.remember(target);
        if (m_source.isRead(*findTable(target.table)) &&
            !m_source.table(target.table).find(KorOdbcKey(target.key)))
            m_odd.insert(target);
    }
}

void PendingReplay::noteOrphans() {
    for (const auto& [row, record] : m_deleted)
        for (const Column& column : findTable(row.table)->columns) {
            if (!column.isReference() || column.role != eReferenceRole::kPartOf)
                continue;
            const RowRef whole{column.target, column.integerIn(record.get())};
            if (!m_deleted.contains(whole) && m_source.isRead(*findTable(whole.table)) &&
                !m_source.table(whole.table).find(KorOdbcKey(whole.key)))
                m_orphans.insert(row);
        }
}

// Cells that another run left changed are compared with what is stored, whatever is pending in them by now.
void PendingReplay::noteUnstored(const PendingLog& lost) {
    for (const Change& change : m_changes)
        for (const CellChange& cell : m_pending.netChange(m_source.id(), change.table).cells)
            m_stored[{{change.table, cell.key}, cell.column}] = cell.stored;
    for (const auto& [place, name] : lost.names())
        if (place.first == m_source.id())
            m_before.noteName(place.second, name);
    for (const PendingStep* step : lost.steps())
        if (step->source == m_source.id() && step->column && step->column->number == 1)
            m_before.noteName({step->table, step->key}, std::get<KorString>(step->after));
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

Result<> PendingReplay::readAnew() {
    return m_source.readAnew(tables());
}

void PendingReplay::take(const StoredSince& since) {
    for (const Change& change : m_changes) {
        for (const CellChange& cell : change.cells)
            m_source.setCell(change.table, KorOdbcKey(cell.key), *cell.column, cell.stored);
        for (const auto& record : change.appended)
            m_source.remove(change.table, KorOdbcKey(record->key));
        for (const auto& record : change.deleted)
            m_source.insert(change.table, *record);
    }
    m_source.take(since);
}

Result<> PendingReplay::read() {
    for (const eTableType type : tables())
        if (Result<> result = m_source.readingOf(type); !result)
            return result;
    return {};
}

std::vector<OutsideConflict> PendingReplay::run() {
    m_before.compare();
    if (!m_replacesPending)
        leaveStored();
    giveKeys();
    leavePartsOfNothing();
    m_pending.beginGroup({});
    if (m_replacesPending)
        m_pending.forget(m_source.id());
    keepGroups();
    insertRows();
    std::vector<Cells> decided = decisions();
    for (std::size_t i = 0; i < decided.size(); ++i)
        writeCells(std::move(decided[i]), i);
    settleNames();
    log();
    removeRows();
    m_pending.endGroup();
    return std::move(m_conflicts);
}

OutsideConflict& PendingReplay::addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                            std::shared_ptr<const StructRecord> record) {
    OutsideConflict& conflict = m_conflicts.emplace_back();
    conflict.kind = kind;
    conflict.table = findTable(row.table);
    conflict.key = row.key;
    conflict.column = column;
    conflict.record = std::move(record);
    if (const StructRecord* before = m_before.stored(row))
        conflict.before = m_source.table(row.table).rows().copyOf(before);
    return conflict;
}

KorString PendingReplay::targetName(const Column& column, const CellValue& mine) const {
    return column.isReference()
               ? m_before.nameOf({column.target, static_cast<std::int32_t>(std::get<std::int64_t>(mine))})
               : KorString();
}

void PendingReplay::log() {
    using enum PendingStep::eAction;
    for (const Change& change : m_changes)
        for (const auto& record : change.appended)
            m_pending.record({m_source.id(), change.table, kAppend, record->key, nullptr, {}, {}, record});
    for (const Written& written : m_written) {
        const RowRef row = written.row;
        PendingStep step{m_source.id(), row.table, kCell, row.key, written.column, written.before, {}, {}};
        step.after = written.column->read(m_source.table(row.table).find(KorOdbcKey(row.key)));
        step.mends = written.mends;
        m_pending.record(std::move(step));
    }
}
