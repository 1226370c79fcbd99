#pragma once

#include "data/store/SqliteReader.h"

#include <span>
#include <unordered_map>

/// Writes changes of tables into a database in which a transaction is open.
class SqliteWriter {
public:
    explicit SqliteWriter(SqliteDatabase& database) : m_database(database) {}

    /// As `StyleStore::apply` says.
    Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts);
    /// Ends the work on one transaction.
    void finish(bool kept);

private:
    using Cells = std::span<const CellChange* const>;

    Result<> deleteRow(const TableSchema& table, const TableLayout& layout, const StructRecord& record,
                       std::vector<StoreConflict>& conflicts);
    void tellRowDifferences(const TableSchema& table, const TableLayout& layout,
                            const SqliteStatement& select, const StructRecord& before,
                            std::vector<StoreConflict>& conflicts) const;
    Result<> insertRows(const TableChange& change, const TableLayout& layout,
                        std::vector<StoreConflict>& conflicts);
    Result<> updateRows(const TableChange& change, std::vector<StoreConflict>& conflicts);
    Result<> tellHolder(const TableSchema& table, StoreConflict& conflict);
    Result<> updateRow(const TableSchema& table, const SqliteStatement& update, Cells cells,
                       std::vector<StoreConflict>& conflicts);
    Result<> tellDifferences(const TableSchema& table, Cells cells, std::vector<StoreConflict>& conflicts);
    void bindStored(const SqliteStatement& statement, int parameter, const CellChange& cell) const;
    /// The prepared statement, kept until the transaction ends.
    const SqliteStatement& prepared(const std::string& sql);

    SqliteDatabase& m_database;
    std::unordered_map<std::string, SqliteStatement> m_statements;
    std::vector<std::pair<std::int32_t, const Column*>> m_mended; ///< unreadable cells that were written
};
