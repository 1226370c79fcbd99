#pragma once

#include "records/TableSchema.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A column of the text form: one column of the table, or several numbered ones that are written as a list.
struct TextColumn {
    std::string name;
    std::vector<const Column*> cells;

    bool isList() const { return cells.size() > 1; }
};

/// Pieces of the text form below its lines.
namespace TextFields {

/// The columns of a table in the text form, in the order of their numbers.
std::vector<TextColumn> columnsOf(const TableSchema& table);

/// Whether rows of this table are parts of other rows: nobody refers to them by name, so names may repeat or
/// be empty.
bool isPartTable(const TableSchema& table);

/// The parts between unescaped separators, without blanks at their ends, still escaped.
std::vector<std::string_view> split(std::string_view text, char separator);
std::string_view trimmed(std::string_view text);

/// As a field of its own; in a list the separator is to be escaped too.
std::string escaped(std::string_view text);
/// Nothing when the text ends in a backslash or has an unknown letter after one.
std::optional<std::string> unescaped(std::string_view field);

/// The shortest text that reads back as the same number.
std::string number(double value);
/// The number that the whole text is, or nothing. Fractions are for real numbers only.
std::optional<double> toReal(std::string_view text);
std::optional<std::int64_t> toInteger(std::string_view text);

} // namespace TextFields
