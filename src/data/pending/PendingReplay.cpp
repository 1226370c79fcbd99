#include "data/pending/PendingReplay.h"

#include "data/store/ReadReport.h"

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

bool PendingReplay::hasWholes(const TableSchema& table, const StructRecord& record) const {
    return std::ranges::all_of(table.columns, [&](const Column& column) {
        const bool isPart = column.isReference() && column.role == eReferenceRole::kPartOf;
        return !isPart || m_appended.contains({column.target, column.integerIn(&record)}) ||
               m_source.table(column.target).find(KorOdbcKey(column.integerIn(&record)));
    });
}

void PendingReplay::append(eTableType type, const std::shared_ptr<StructRecord>& record) {
    const TableSchema& table = *findTable(type);
    followKeys(table, *record);
    if (record->key <= 0 || !hasWholes(table, *record)) {
        addConflict(OutsideConflict::eKind::kGone,
                    {&table, record->key, nullptr, {}, displayText(record->name), {}}, record->name, {});
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
    StoreConflict values{&table.schema(),         cell.key, cell.column, {}, displayText(mine),
                         displayText(cell.stored)};
    if (!row) {
        addConflict(OutsideConflict::eKind::kGone, values, {}, mine);
        return;
    }
    const CellValue stored = cell.column->read(row);
    if (stored == mine)
        return;
    if (stored != cell.stored) {
        values.stored = displayText(stored);
        addConflict(OutsideConflict::eKind::kCell, values, row->name, mine);
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
        addConflict(OutsideConflict::eKind::kDelete,
                    {&table.schema(),
                     row->key,
                     &column,
                     displayText(column.read(row)),
                     {},
                     displayText(column.read(&before))},
                    row->name, {});
        return;
    }
    const auto copy = table.rows().copyOf(row);
    m_source.remove(type, KorOdbcKey(before.key));
    m_pending.record({m_source.id(), type, PendingStep::eAction::kDelete, copy->key, nullptr, {}, {}, copy});
}

void PendingReplay::addConflict(OutsideConflict::eKind kind, StoreConflict values, const KorString& rowName,
                                const CellValue& mine) {
    m_conflicts.push_back({kind, std::move(values), rowName, mine});
}
