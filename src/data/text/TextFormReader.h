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
    Result<> read(const std::string& path);
    /// After the last file.
    Result<> resolveReferences();

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

    Result<> readFile(const std::string& file);
    Result<> readLines(std::istream& stream);
    Result<> include(std::string_view path);
    Result<> readLine(std::string_view line);
    Result<> openSection(std::string_view name);
    Result<> readHeader(std::string_view line);
    Result<> readRow(std::string_view line);
    Result<> readField(StructRecord& record, const TextColumn& column, std::string_view field);
    Result<> readKey(StructRecord& record, std::string_view field);
    Result<> readCell(StructRecord& record, const Column& column, std::string_view field);
    Result<> readReference(StructRecord& record, const Column& column, std::string_view field);
    Result<> registerName(const StructRecord& record);
    Result<> resolve(const OpenReference& reference);

    bool hasKeyColumn() const;
    Result<> failure(const KorString& pattern, std::initializer_list<KorString> arguments = {}) const {
        return failureAt(m_place, pattern, arguments);
    }
    static Result<> failureAt(const Place& place, const KorString& pattern,
                              std::initializer_list<KorString> arguments);

    TableRows& m_rows;
    std::set<std::string> m_files; ///< read so far; each counts once
    Place m_place;
    const TableSchema* m_table = nullptr; ///< of the section that is being read
    std::vector<TextColumn> m_columns;    ///< as its header names them; empty until it has been read
    std::array<Names, kEndOfTables> m_names;
    std::vector<OpenReference> m_open;
};
