#pragma once

#include "data/store/StyleStore.h"

struct sqlite3_value;

/// Puts the problems of reading one table into sentences. After some of them it only counts: a column of
/// texts where numbers belong is one thing to say, not a hundred thousand.
class ReadReport {
public:
    ReadReport(const std::string& file, const TableSchema& table, std::vector<ReadProblem>& problems)
        : m_file(file), m_table(table), m_problems(problems) {}
    ReadReport(const ReadReport&) = delete;
    ReadReport& operator=(const ReadReport&) = delete;
    /// Adds how many more there were.
    ~ReadReport();

    void addMissingTable();
    void addMissingColumn(const Column& column);
    /// A cell that does not fit its column, and as a user reads it what it holds; `record` holds its default,
    /// or what is stored when it is `kept`.
    void addCell(const StructRecord& record, const Column& column, const std::string& stored, bool kept);
    /// A row without a usable key, which is left out.
    void addRow(const std::string& key, bool isDuplicate);

private:
    /// Adds `problem` with this sentence.
    void add(const KorString& pattern, std::initializer_list<KorString> arguments, ReadProblem problem = {});

    const std::string& m_file;
    const TableSchema& m_table;
    std::vector<ReadProblem>& m_problems;
    int m_count = 0;
    bool m_moreAreKept = true; // those that are only counted
};

/// A stored value as a user reads it, long texts cut.
std::string displayText(sqlite3_value* value);
/// A text as a user reads it, long ones cut.
std::string quotedStart(std::string_view text);
/// A cell as a user reads it.
std::string displayText(const CellValue& value);
