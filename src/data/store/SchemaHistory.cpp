#include "data/store/SchemaHistory.h"

#include "base/KorAssert.h"
#include "data/store/ReadReport.h"

namespace {

std::string columnSql(const Column& column, const StructRecord& defaults, const SchemaWords& words) {
    const CellValue value = column.read(&defaults);
    const auto* text = std::get_if<KorString>(&value);
    return words.column(column.name) + " " +
           (column.isText()   ? words.textType
            : column.isReal() ? words.realType
                              : "INTEGER") +
           " NOT NULL DEFAULT " + (text ? quotedText(text->toStdString()) : displayText(value));
}

// With the columns that the table has in this version.
std::string createTableSql(const TableSchema& table, int version, const SchemaWords& words) {
    const auto defaults = table.makeRows()->copyOf(nullptr);
    std::string sql = "CREATE TABLE IF NOT EXISTS " + words.table(table.name) + " (" + words.column("key") +
                      " INTEGER PRIMARY KEY";
    for (const Column& column : table.columns)
        if (column.since <= version)
            sql += ", " + columnSql(column, *defaults, words);
    return sql + ")";
}

std::string addColumnSql(const TableSchema& table, const Column& column, const SchemaWords& words) {
    return "ALTER TABLE " + words.table(table.name) + " ADD COLUMN " +
           columnSql(column, *table.makeRows()->copyOf(nullptr), words);
}

} // namespace

SchemaHistory::SchemaHistory(const std::vector<TableSchema>& tables, std::vector<SchemaVersion> versions)
    : m_tables(tables), m_versions(std::move(versions)) {
    for (std::size_t i = 1; i < m_versions.size(); ++i)
        KorAssert::check(m_versions[i].number == m_versions[i - 1].number + 1, "versions count up by one");
}

const SchemaHistory& SchemaHistory::own() {
    static const SchemaHistory history(allTables(), {{1, "the first version"}});
    return history;
}

std::vector<std::string> SchemaHistory::creation(const SchemaWords& words) const {
    std::vector<std::string> statements;
    for (const TableSchema& table : m_tables)
        statements.push_back(createTableSql(table, current(), words));
    return statements;
}

// A table that is missing although the database should have it stays so: its rows are lost, and that is told
// when it is read.
std::vector<std::string> SchemaHistory::additions(int version, const StoredColumns& stored,
                                                  const SchemaWords& words) const {
    std::vector<std::string> statements;
    for (const TableSchema& table : m_tables) {
        if (table.since == version)
            statements.push_back(createTableSql(table, version, words));
        if (!stored.hasTable(table))
            continue;
        for (const Column& column : table.columns)
            if (column.since == version && !stored.has(table, column))
                statements.push_back(addColumnSql(table, column, words));
    }
    return statements;
}
