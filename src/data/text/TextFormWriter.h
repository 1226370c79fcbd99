#pragma once

#include "data/text/TableRows.h"
#include "data/text/TextFields.h"

#include <unordered_map>

/// Puts tables into their text form.
class TextFormWriter {
public:
    explicit TextFormWriter(const TableRows& rows);

    /// The sections of all tables that have rows.
    std::string text() const;

private:
    /// What each table's rows are called in references: keys to names that are unique and not empty.
    using Names = std::unordered_map<std::int32_t, KorString>;

    std::string section(const TableSchema& table) const;
    std::vector<TextColumn> usedColumns(const TableSchema& table) const;
    bool needsKeys(const TableSchema& table) const;
    std::string field(const TextColumn& column, const StructRecord& record,
                      const StructRecord& defaults) const;
    std::string cell(const Column& column, const StructRecord& record, const StructRecord& defaults) const;
    std::string reference(eTableType target, std::int32_t key) const;

    const TableRows& m_rows;
    std::array<Names, kEndOfTables> m_names;
};
