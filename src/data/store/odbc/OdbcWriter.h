#pragma once

#include "data/store/odbc/OdbcReader.h"

#include <span>

/// Writes changes of tables into a database in which a transaction is open, by few statements of many rows.
class OdbcWriter {
public:
    explicit OdbcWriter(OdbcDatabase& database) : m_database(database) {}

    /// As `StyleStore::apply` says.
    Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts);
    /// What was written since the last `finish`: SQL that adds it to the tables of changes, under the number
    /// `sequence` and the mark.
    std::vector<std::string> notes(std::int64_t sequence, std::uint32_t mark) const;
    /// SQL that takes a mark of a transaction whose outcome is not known, so that it cannot be kept any more.
    std::string fence(std::uint32_t mark) const { return commitSql(0, mark); }
    /// Ends the work on one transaction.
    void finish(bool kept);

private:
    using Cells = std::vector<const CellChange*>;
    /// A row as it is stored now.
    struct Present {
        std::shared_ptr<StructRecord> record;
        std::map<const Column*, std::optional<std::string>> misfits; ///< what they hold
    };
    using Presents = std::map<std::int32_t, Present>;
    struct Note {
        const TableSchema* table = nullptr;
        std::int32_t key = 0;
        char kind = 0; ///< 'a' appended, 'c' changed, 'd' deleted
    };

    Result<> readPresent(const TableSchema& table, const TableLayout& layout,
                         const std::vector<std::int32_t>& keys, Presents& rows);
    Result<> deleteRows(const TableChange& change, const TableLayout& layout, const Presents& rows,
                        std::vector<StoreConflict>& conflicts);
    Result<> updateRows(const TableSchema& table, const std::vector<Cells>& rows, const Presents& presents,
                        std::vector<StoreConflict>& conflicts);
    bool compare(const TableSchema& table, const Cells& cells, const Presents& rows,
                 std::vector<StoreConflict>& conflicts) const;
    Result<> insertRows(const TableChange& change, const TableLayout& layout,
                        std::vector<StoreConflict>& conflicts);
    /// Runs SQL that must change this many rows.
    Result<> change(const std::string& sql, std::size_t rows);
    std::string updateSql(const TableSchema& table, std::span<const Cells> rows) const;
    std::string commitSql(std::int64_t sequence, std::uint32_t mark) const;
    std::string isStill(const CellChange& cell) const;

    OdbcDatabase& m_database;
    std::vector<Note> m_notes;
    std::vector<std::pair<const Column*, std::int32_t>> m_mended;
};
