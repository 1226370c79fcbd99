#include "data/pending/PendingReplay.h"

#include <algorithm>
#include <limits>

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
    if (!m_replacesPending)
        return; // the tables do not show what another run left
    for (const Change& change : m_changes) {
        for (const CellChange& cell : change.cells)
            remember({change.table, cell.key});
        for (const auto& record : change.appended)
            for (const Column& column : findTable(change.table)->columns)
                if (column.isReference() && column.role == eReferenceRole::kPartOf)
                    remember({column.target, column.integerIn(record.get())});
    }
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

std::set<eTableType> PendingReplay::tables() const {
    std::set<eTableType> types;
    for (const Change& change : m_changes) {
        types.insert(change.table);
        for (const Column& column : findTable(change.table)->columns)
            if (column.isReference() && column.role == eReferenceRole::kPartOf)
                types.insert(column.target);
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
    m_pending.beginGroup({});
    if (m_replacesPending)
        m_pending.forget(m_source.id());
    for (const Change& change : m_changes)
        for (const auto& record : change.appended)
            append(change.table, record);
    for (const Change& change : m_changes)
        for (const CellChange& cell : change.cells)
            writeCell(change.table, cell);
    for (const Change& change : m_changes)
        for (const auto& before : change.deleted)
            remove(change.table, *before);
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

// The column that makes the row a part of one that is gone, or null.
const Column* PendingReplay::missingWhole(const TableSchema& table, const StructRecord& record) const {
    const auto it = std::ranges::find_if(table.columns, [&](const Column& column) {
        const bool isPart = column.isReference() && column.role == eReferenceRole::kPartOf;
        return isPart && !m_appended.contains({column.target, column.integerIn(&record)}) &&
               !m_source.table(column.target).find(KorOdbcKey(column.integerIn(&record)));
    });
    return it == table.columns.end() ? nullptr : &*it;
}

void PendingReplay::addGone(eTableType type, const std::shared_ptr<StructRecord>& appended) {
    const TableSchema& table = *findTable(type);
    OutsideConflict& conflict = m_conflicts.emplace_back();
    conflict.kind = OutsideConflict::eKind::kGone;
    conflict.table = &table;
    conflict.key = appended->key;
    conflict.record = appended;
    if (const Column* column = missingWhole(table, *appended))
        if (const auto whole = remembered({column->target, column->integerIn(appended.get())}))
            conflict.wholeName = whole->name;
}

void PendingReplay::append(eTableType type, const std::shared_ptr<StructRecord>& record) {
    const TableSchema& table = *findTable(type);
    followKeys(table, *record);
    if (record->key <= 0 || missingWhole(table, *record)) {
        addGone(type, record);
        return;
    }
    m_source.insert(type, *record);
    m_pending.record(
        {m_source.id(), type, PendingStep::eAction::kAppend, record->key, nullptr, {}, {}, record});
}

void PendingReplay::writeCell(eTableType type, const CellChange& cell) {
    const StyleTable& table = m_source.table(type);
    const StructRecord* row = table.find(KorOdbcKey(cell.key));
    CellValue mine = cell.wanted;
    if (cell.column->isReference())
        if (const auto it = m_newKeys.find(
                {cell.column->target, static_cast<std::int32_t>(std::get<std::int64_t>(mine))});
            it != m_newKeys.end())
            mine = std::int64_t{it->second};
    if (!row) {
        m_conflicts.push_back({OutsideConflict::eKind::kGone,
                               &table.schema(),
                               cell.key,
                               cell.column,
                               remembered({type, cell.key}),
                               {},
                               {},
                               mine});
        return;
    }
    const CellValue stored = cell.column->read(row);
    if (stored == mine)
        return;
    if (stored != cell.stored) {
        m_conflicts.push_back({OutsideConflict::eKind::kCell,
                               &table.schema(),
                               cell.key,
                               cell.column,
                               table.rows().copyOf(row),
                               {},
                               stored,
                               mine});
        return;
    }
    m_source.setCell(type, KorOdbcKey(cell.key), *cell.column, mine);
    m_pending.record(
        {m_source.id(), type, PendingStep::eAction::kCell, cell.key, cell.column, stored, mine, {}});
}

void PendingReplay::remove(eTableType type, const StructRecord& before) {
    const StyleTable& table = m_source.table(type);
    const StructRecord* row = table.find(KorOdbcKey(before.key));
    if (!row)
        return;
    for (const Column& column : table.schema().columns) {
        if (column.read(row) == column.read(&before))
            continue;
        m_conflicts.push_back({OutsideConflict::eKind::kDelete,
                               &table.schema(),
                               row->key,
                               &column,
                               table.rows().copyOf(row),
                               {},
                               column.read(row),
                               {}});
        return;
    }
    const auto copy = table.rows().copyOf(row);
    m_source.remove(type, KorOdbcKey(before.key));
    m_pending.record({m_source.id(), type, PendingStep::eAction::kDelete, copy->key, nullptr, {}, {}, copy});
}
