#include "data/store/SqliteWriter.h"

#include "data/store/ReadReport.h"

#include <algorithm>

namespace {

std::string updateSql(const TableSchema& table, std::span<const CellChange* const> cells) {
    std::string sql = "UPDATE " + quotedIdentifier(table.name) + " SET ";
    std::string condition = " WHERE \"key\" = ?";
    for (const CellChange* cell : cells) {
        const std::string column = quotedIdentifier(cell->column->name);
        sql += (cell == cells.front() ? "" : ", ") + column + " = ?";
        condition += " AND " + column + " COLLATE BINARY IS ?";
    }
    return sql + condition;
}

std::string insertSql(const TableSchema& table, const std::vector<const Column*>& columns) {
    std::string sql = "INSERT INTO " + quotedIdentifier(table.name) + " (\"key\"";
    std::string values = ") VALUES (?";
    for (const Column* column : columns) {
        sql += ", " + quotedIdentifier(column->name);
        values += ", ?";
    }
    return sql + values + ")";
}

bool isKeyTaken(int code) {
    return code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID ||
           code == SQLITE_CONSTRAINT_UNIQUE;
}

} // namespace

Result<> SqliteWriter::apply(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    const TableSchema& table = *change.table;
    const TableLayout* layout = nullptr;
    Result<> result = m_database.layoutOf(table, layout);
    if (result)
        result = refuseMissing(change, *layout, m_database.file);
    for (auto it = change.deleted.begin(); result && it != change.deleted.end(); ++it)
        result = deleteRow(table, *layout, **it, conflicts);
    if (result)
        result = updateRows(change, conflicts);
    if (result && !change.appended.empty())
        result = insertRows(change, *layout, conflicts);
    return result;
}

void SqliteWriter::finish(bool kept) {
    m_statements.clear();
    if (kept)
        for (const auto& [key, column] : m_mended)
            m_database.unreadable->forget(key, *column);
    m_mended.clear();
}

// Compares the row on which the statement stands with what it was.
void SqliteWriter::tellRowDifferences(const TableSchema& table, const TableLayout& layout,
                                      const SqliteStatement& select, const StructRecord& before,
                                      std::vector<StoreConflict>& conflicts) const {
    const auto stored = table.makeRows()->copyOf(nullptr);
    std::vector<OddCell> odd;
    SqliteRowReader(select, layout.present).read(*stored, odd);
    for (const Column* column : layout.present)
        if (const CellValue now = column->read(stored.get()); now != column->read(&before))
            conflicts.push_back(
                {&table, before.key, column, displayText(now), "", displayText(column->read(&before))});
}

Result<> SqliteWriter::deleteRow(const TableSchema& table, const TableLayout& layout,
                                 const StructRecord& record, std::vector<StoreConflict>& conflicts) {
    const SqliteStatement& select = prepared(selectSql(table, layout.present) + " WHERE \"key\" = ?");
    select.bind(1, std::int64_t{record.key});
    const int found = select.step();
    if (found == SQLITE_DONE) {
        conflicts.push_back({&table, record.key, nullptr, "", "", displayText(record.name)});
        return {};
    }
    if (found != SQLITE_ROW)
        return m_database.failure(found);
    const std::size_t before = conflicts.size();
    tellRowDifferences(table, layout, select, record, conflicts);
    select.reset();
    if (conflicts.size() > before)
        return {};
    const SqliteStatement& remove =
        prepared("DELETE FROM " + quotedIdentifier(table.name) + " WHERE \"key\" = ?");
    remove.bind(1, std::int64_t{record.key});
    const int code = remove.step();
    remove.reset();
    return code == SQLITE_DONE ? Result<>{} : m_database.failure(code);
}

Result<> SqliteWriter::insertRows(const TableChange& change, const TableLayout& layout,
                                  std::vector<StoreConflict>& conflicts) {
    const TableSchema& table = *change.table;
    const SqliteStatement& insert = prepared(insertSql(table, layout.present));
    std::vector<CellValue> values(layout.present.size()); // they must outlive their binding
    for (const StructRecord* record : change.appended) {
        insert.bind(1, std::int64_t{record->key});
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = layout.present[i]->read(record);
            insert.bind(static_cast<int>(i) + 2, values[i]);
        }
        const int code = insert.step();
        insert.reset();
        Result<> result;
        if (isKeyTaken(code)) {
            conflicts.push_back({&table, record->key, nullptr, "", displayText(record->name), ""});
            result = tellHolder(table, conflicts.back());
        } else if (code != SQLITE_DONE) {
            result = m_database.failure(code);
        }
        if (!result)
            return result;
    }
    return {};
}

// Says which row has the key that was to be given to a new one.
Result<> SqliteWriter::tellHolder(const TableSchema& table, StoreConflict& conflict) {
    const SqliteStatement& select = prepared("SELECT " + quotedIdentifier(table.columns.front().name) +
                                             " FROM " + quotedIdentifier(table.name) + " WHERE \"key\" = ?");
    select.bind(1, std::int64_t{conflict.key});
    const int code = select.step();
    if (code == SQLITE_ROW)
        conflict.stored = displayText(storedCell(select.get(), 0).get());
    select.reset();
    return code == SQLITE_ROW ? Result<>{} : m_database.failure(code);
}

// Changes mostly come in runs of the same columns, so the statement of the row before is tried first.
Result<> SqliteWriter::updateRows(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    const std::vector<const CellChange*> cells = sortedCells(change);
    const SqliteStatement* update = nullptr;
    Cells before;
    for (auto first = cells.begin(); first != cells.end();) {
        const auto last = std::find_if(first, cells.end(),
                                       [&](const CellChange* cell) { return cell->key != (*first)->key; });
        const Cells row(first, last);
        if (!std::ranges::equal(row, before, {}, &CellChange::column, &CellChange::column))
            update = &prepared(updateSql(*change.table, row));
        if (Result<> result = updateRow(*change.table, *update, row, conflicts); !result)
            return result;
        before = row;
        first = last;
    }
    return {};
}

Result<> SqliteWriter::updateRow(const TableSchema& table, const SqliteStatement& update, Cells cells,
                                 std::vector<StoreConflict>& conflicts) {
    int parameter = 0;
    for (const CellChange* cell : cells)
        update.bind(++parameter, cell->wanted);
    update.bind(++parameter, std::int64_t{cells.front()->key});
    for (const CellChange* cell : cells)
        bindStored(update, ++parameter, *cell);
    const int code = update.step();
    update.reset();
    if (code != SQLITE_DONE)
        return m_database.failure(code);
    if (sqlite3_changes(m_database.connection.get()) == 0)
        return tellDifferences(table, cells, conflicts);
    for (const CellChange* cell : cells)
        if (m_database.unreadable->find(cell->key, *cell->column))
            m_mended.emplace_back(cell->key, cell->column);
    return {};
}

void SqliteWriter::bindStored(const SqliteStatement& statement, int parameter, const CellChange& cell) const {
    if (sqlite3_value* stored = m_database.unreadable->find(cell.key, *cell.column))
        sqlite3_bind_value(statement.get(), parameter, stored);
    else
        statement.bind(parameter, cell.stored);
}

namespace {

// What a cell holds, and whether that is a given value.
std::string comparison(const TableSchema& table, const Column& cell) {
    const std::string column = quotedIdentifier(cell.name);
    return "SELECT " + column + ", " + column + " COLLATE BINARY IS ? FROM " + quotedIdentifier(table.name) +
           " WHERE \"key\" = ?";
}

} // namespace

Result<> SqliteWriter::tellDifferences(const TableSchema& table, Cells cells,
                                       std::vector<StoreConflict>& conflicts) {
    const std::int32_t key = cells.front()->key;
    for (const CellChange* cell : cells) {
        const SqliteStatement& select = prepared(comparison(table, *cell->column));
        bindStored(select, 1, *cell);
        select.bind(2, std::int64_t{key});
        const int code = select.step();
        if (code == SQLITE_ROW && sqlite3_column_int(select.get(), 1) == 0)
            conflicts.push_back({&table, key, cell->column, displayText(storedCell(select.get(), 0).get()),
                                 displayText(cell->wanted), displayText(cell->stored)});
        select.reset();
        if (code == SQLITE_DONE) {
            conflicts.push_back(goneRow(table, cells));
            return {};
        }
        if (code != SQLITE_ROW)
            return m_database.failure(code);
    }
    return {};
}

const SqliteStatement& SqliteWriter::prepared(const std::string& sql) {
    const auto it = m_statements.find(sql);
    return it != m_statements.end()
               ? it->second
               : m_statements.emplace(sql, SqliteStatement(m_database.connection.get(), sql)).first->second;
}
