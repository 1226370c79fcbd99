#include "data/store/odbc/OdbcWriter.h"

#include "data/store/ReadReport.h"
#include "data/store/odbc/OdbcTables.h"

#include <algorithm>
#include <set>

namespace {

constexpr std::size_t kRowsOfStatement = 200;
constexpr std::size_t kBytesOfStatement = std::size_t{256} << 10;
constexpr std::size_t kMostNotes = 2000; // more are told table by table

std::vector<std::int32_t> keysOf(const std::vector<const StructRecord*>& records) {
    std::vector<std::int32_t> keys;
    for (const StructRecord* record : records)
        keys.push_back(record->key);
    return keys;
}

/// Makes statements of many rows, each no longer than drivers and engines like.
class RowsStatement {
public:
    explicit RowsStatement(std::string head) : m_head(std::move(head)) {}

    void add(const std::string& row) {
        if (m_statements.empty() || m_statements.back().size() + row.size() > kBytesOfStatement) {
            m_statements.push_back(m_head + row);
            m_counts.push_back(1);
        } else {
            m_statements.back() += ", " + row;
            ++m_counts.back();
        }
    }
    const std::vector<std::string>& statements() const { return m_statements; }
    const std::vector<std::size_t>& counts() const { return m_counts; }

private:
    std::string m_head;
    std::vector<std::string> m_statements;
    std::vector<std::size_t> m_counts;
};

} // namespace

Result<> OdbcWriter::apply(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    const TableSchema& table = *change.table;
    const TableLayout* layout = nullptr;
    Result<> result = m_database.layoutOf(table, layout);
    if (result)
        result = refuseMissing(change, *layout, m_database.name());
    std::vector<Cells> changed;
    for (const CellChange* cell : sortedCells(change)) {
        if (changed.empty() || changed.back().front()->key != cell->key)
            changed.emplace_back();
        changed.back().push_back(cell);
    }
    std::vector<std::int32_t> keys = keysOf(change.deleted);
    for (const Cells& cells : changed)
        keys.push_back(cells.front()->key);
    Presents rows;
    if (result)
        result = readPresent(table, *layout, keys, rows);
    if (result)
        result = deleteRows(change, *layout, rows, conflicts);
    if (result)
        result = updateRows(table, changed, rows, conflicts);
    if (result && !change.appended.empty())
        result = insertRows(change, *layout, conflicts);
    return result;
}

Result<> OdbcWriter::readPresent(const TableSchema& table, const TableLayout& layout,
                                 const std::vector<std::int32_t>& keys, Presents& rows) {
    std::vector<OddCell> odd;
    for (std::size_t first = 0; first < keys.size(); first += kKeysOfStatement) {
        const std::span some =
            std::span(keys).subspan(first, std::min(kKeysOfStatement, keys.size() - first));
        OdbcTableScan scan(m_database, table, layout.present);
        Result<> result = scan.run(
            isKeyIn(*m_database.dialect, some), m_database.dialect->forUpdate(), [&](std::int32_t key) {
                Present& row = rows[key];
                row.record = table.makeRows()->copyOf(nullptr);
                row.record->key = key;
                scan.fill(*row.record, odd);
                for (const OddCell& cell : odd)
                    if (cell.fit == eCellFit::kMisfit)
                        row.misfits[layout.present[cell.place]] = scan.stored(cell.place);
                odd.clear();
            });
        if (!result)
            return result;
    }
    return {};
}

Result<> OdbcWriter::change(const std::string& sql, std::size_t rows) {
    std::int64_t count = -1;
    if (const OdbcError error = m_database.connection.execute(sql, &count))
        return m_database.failure(error);
    return count < 0 || count == static_cast<std::int64_t>(rows) ? Result<>()
                                                                 : m_database.fault(eServerFault::kRowsMoved);
}

Result<> OdbcWriter::deleteRows(const TableChange& change, const TableLayout& layout, const Presents& rows,
                                std::vector<StoreConflict>& conflicts) {
    std::vector<std::int32_t> going;
    for (const StructRecord* before : change.deleted) {
        const std::size_t known = conflicts.size();
        const auto now = rows.find(before->key);
        if (now == rows.end())
            conflicts.push_back({change.table, before->key, nullptr, "", "", displayText(before->name)});
        else
            for (const Column* column : layout.present)
                if (const CellValue stored = column->read(now->second.record.get());
                    stored != column->read(before))
                    conflicts.push_back({change.table, before->key, column, displayText(stored), "",
                                         displayText(column->read(before))});
        if (conflicts.size() == known) {
            going.push_back(before->key);
            m_notes.push_back({change.table, before->key, 'd'});
        }
    }
    Result<> result;
    for (std::size_t first = 0; result && first < going.size(); first += kKeysOfStatement) {
        const std::span some =
            std::span(going).subspan(first, std::min(kKeysOfStatement, going.size() - first));
        result = this->change("DELETE FROM " + m_database.dialect->table(change.table->name) + " WHERE " +
                                  isKeyIn(*m_database.dialect, some),
                              some.size());
    }
    return result;
}

// Returns whether all cells hold what they held.
bool OdbcWriter::compare(const TableSchema& table, const Cells& cells, const Presents& rows,
                         std::vector<StoreConflict>& conflicts) const {
    const auto now = rows.find(cells.front()->key);
    if (now == rows.end()) {
        conflicts.push_back(goneRow(table, cells));
        return false;
    }
    const std::size_t known = conflicts.size();
    for (const CellChange* cell : cells) {
        const auto before = m_database.unreadable.find({cell->column, cell->key});
        const auto misfit = now->second.misfits.find(cell->column);
        const bool isMisfit = misfit != now->second.misfits.end();
        const CellValue value = cell->column->read(now->second.record.get());
        const bool isStill = before != m_database.unreadable.end()
                                 ? isMisfit && misfit->second == before->second
                                 : !isMisfit && value == cell->stored;
        if (!isStill)
            conflicts.push_back({&table, cell->key, cell->column,
                                 isMisfit ? displayCell(misfit->second) : displayText(value),
                                 displayText(cell->wanted), displayText(cell->stored)});
    }
    return conflicts.size() == known;
}

Result<> OdbcWriter::updateRows(const TableSchema& table, const std::vector<Cells>& rows,
                                const Presents& presents, std::vector<StoreConflict>& conflicts) {
    std::map<std::vector<const Column*>, std::vector<Cells>> alike; // rows that change the same columns
    for (const Cells& cells : rows) {
        if (!compare(table, cells, presents, conflicts))
            continue;
        std::vector<const Column*> columns;
        for (const CellChange* cell : cells) {
            columns.push_back(cell->column);
            if (m_database.unreadable.contains({cell->column, cell->key}))
                m_mended.emplace_back(cell->column, cell->key);
        }
        alike[columns].push_back(cells);
        m_notes.push_back({&table, cells.front()->key, 'c'});
    }
    Result<> result;
    for (const auto& [columns, all] : alike)
        for (std::size_t first = 0; result && first < all.size(); first += kRowsOfStatement) {
            const std::span some =
                std::span(all).subspan(first, std::min(kRowsOfStatement, all.size() - first));
            result = change(updateSql(table, some), some.size());
        }
    return result;
}

std::string OdbcWriter::isStill(const CellChange& cell) const {
    const OdbcDialect& dialect = *m_database.dialect;
    const auto before = m_database.unreadable.find({cell.column, cell.key});
    if (before == m_database.unreadable.end())
        return dialect.name(cell.column->name) + " = " + dialect.value(cell.stored);
    return before->second ? dialect.asText(*cell.column) + " = " + dialect.text(*before->second)
                          : dialect.name(cell.column->name) + " IS NULL";
}

// All rows change the same columns.
std::string OdbcWriter::updateSql(const TableSchema& table, std::span<const Cells> rows) const {
    const OdbcDialect& dialect = *m_database.dialect;
    const std::string key = dialect.name("key");
    std::string sql = "UPDATE " + dialect.table(table.name) + " SET ";
    for (std::size_t i = 0; i < rows.front().size(); ++i) {
        sql += (i == 0 ? "" : ", ") + dialect.name(rows.front()[i]->column->name) + " = CASE " + key;
        for (const Cells& cells : rows)
            sql += " WHEN " + std::to_string(cells[i]->key) + " THEN " + dialect.value(cells[i]->wanted);
        sql += " END";
    }
    std::string condition;
    for (const Cells& cells : rows) {
        condition +=
            (condition.empty() ? " WHERE (" : ") OR (") + key + " = " + std::to_string(cells.front()->key);
        if (dialect.forUpdate().empty()) // nothing else keeps them as they were when they were compared
            for (const CellChange* cell : cells)
                condition += " AND " + isStill(*cell);
    }
    return sql + condition + ")";
}

Result<> OdbcWriter::insertRows(const TableChange& change, const TableLayout& layout,
                                std::vector<StoreConflict>& conflicts) {
    const TableSchema& table = *change.table;
    const OdbcDialect& dialect = *m_database.dialect;
    const auto [lowest, highest] = std::ranges::minmax(keysOf(change.appended));
    std::map<std::int32_t, KorString> taken;
    const std::vector<const Column*> names = {&table.columns.front()};
    OdbcTableScan scan(m_database, table, names);
    std::vector<OddCell> odd;
    const std::string key = dialect.name("key");
    Result<> result = scan.run(key + " BETWEEN " + std::to_string(lowest) + " AND " + std::to_string(highest),
                               {}, [&](std::int32_t there) {
                                   const auto record = table.makeRows()->copyOf(nullptr);
                                   scan.fill(*record, odd);
                                   taken[there] = record->name;
                               });
    std::string head = "INSERT INTO " + dialect.table(table.name) + " (" + key;
    for (const Column* column : layout.present)
        head += ", " + dialect.name(column->name);
    RowsStatement insert(head + ") VALUES ");
    for (const StructRecord* record : change.appended) {
        if (const auto holder = taken.find(record->key); holder != taken.end()) {
            conflicts.push_back(
                {&table, record->key, nullptr, displayText(holder->second), displayText(record->name), ""});
            continue;
        }
        std::string row = "(" + std::to_string(record->key);
        for (const Column* column : layout.present)
            row += ", " + dialect.value(column->read(record));
        insert.add(row + ")");
        m_notes.push_back({&table, record->key, 'a'});
    }
    const std::vector<std::string>& statements = insert.statements();
    for (std::size_t i = 0; result && i < statements.size(); ++i)
        result = this->change(statements[i], insert.counts()[i]);
    return result;
}

std::string OdbcWriter::commitSql(std::int64_t sequence, std::uint32_t mark) const {
    const OdbcDialect& dialect = *m_database.dialect;
    return "INSERT INTO " + dialect.table(kCommitTable) + " (mark, sequence, stored_by, stored_at) VALUES (" +
           std::to_string(mark) + ", " + std::to_string(sequence) + ", " + dialect.currentUser() +
           ", CURRENT_TIMESTAMP)";
}

std::vector<std::string> OdbcWriter::notes(std::int64_t sequence, std::uint32_t mark) const {
    const OdbcDialect& dialect = *m_database.dialect;
    std::vector<std::string> sql = {commitSql(sequence, mark)};
    RowsStatement changes("INSERT INTO " + dialect.table(kChangeTable) +
                          " (sequence, style_table, row_key, kind) VALUES ");
    const auto add = [&](const TableSchema& table, std::int32_t key, char kind) {
        changes.add("(" + std::to_string(sequence) + ", " + dialect.text(table.name) + ", " +
                    std::to_string(key) + ", '" + kind + "')");
    };
    std::set<const TableSchema*> tables;
    for (const Note& note : m_notes)
        if (m_notes.size() <= kMostNotes)
            add(*note.table, note.key, note.kind);
        else if (tables.insert(note.table).second)
            add(*note.table, 0, kManyRows);
    std::ranges::copy(changes.statements(), std::back_inserter(sql));
    if (sequence % kCommitsBetweenRemovals == 0)
        for (const char* table : {kChangeTable, kCommitTable})
            sql.push_back("DELETE FROM " + dialect.table(table) +
                          " WHERE sequence > 0 AND sequence <= " + std::to_string(sequence - kKnownCommits));
    return sql;
}

void OdbcWriter::finish(bool kept) {
    if (kept)
        for (const auto& cell : m_mended)
            m_database.unreadable.erase(cell);
    m_mended.clear();
    m_notes.clear();
}
