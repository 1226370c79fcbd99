#pragma once

#include "data/text/TableRows.h"
#include "data/text/TextFields.h"

#include <set>
#include <unordered_map>

/// Reads the files of one text form. References are resolved when all of them have been read, so that the
/// order of rows, sections and files does not matter.
class TextFormReader {
public:
    explicit TextFormReader(TableRows& rows) : m_rows(rows) {}

    /// A file, or all files of a folder.
    StoreResult read(const std::string& path);
    /// After the last file.
    StoreResult resolveReferences();

private:
    struct Place {
        std::string file;
        int line = 0;
    };
    struct OpenReference {
        const TableSchema* table = nullptr;
        std::int32_t key = 0; ///< of the row that refers
        const Column* column = nullptr;
        KorString target;
        Place place;
    };
    struct Names {
        std::unordered_map<KorString, std::int32_t> keys;
        std::set<KorString> ambiguous;
    };

    StoreResult readFile(const std::string& file);
    StoreResult readLines(std::istream& stream);
    StoreResult include(std::string_view path);
    StoreResult readLine(std::string_view line);
    StoreResult openSection(std::string_view name);
    StoreResult readHeader(std::string_view line);
    StoreResult readRow(std::string_view line);
    StoreResult readField(StructRecord& record, const TextColumn& column, std::string_view field);
    StoreResult readKey(StructRecord& record, std::string_view field);
    StoreResult readCell(StructRecord& record, const Column& column, std::string_view field);
    StoreResult readReference(StructRecord& record, const Column& column, std::string_view field);
    StoreResult registerName(const StructRecord& record);
    StoreResult resolve(const OpenReference& reference);

    bool hasKeyColumn() const;
    StoreResult failure(const KorString& pattern, std::initializer_list<KorString> arguments = {}) const {
        return failureAt(m_place, pattern, arguments);
    }
    static StoreResult failureAt(const Place& place, const KorString& pattern,
                                 std::initializer_list<KorString> arguments);

    TableRows& m_rows;
    std::set<std::string> m_files; ///< read so far; each counts once
    Place m_place;
    const TableSchema* m_table = nullptr; ///< of the section that is being read
    std::vector<TextColumn> m_columns;    ///< as its header names them; empty until it has been read
    std::array<Names, kEndOfTables> m_names;
    std::vector<OpenReference> m_open;
};
