#include "data/store/ReadReport.h"

#include "base/Translation.h"
#include "base/Utf8.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace {

constexpr int kSentencesPerTable = 20;
constexpr std::size_t kLongestText = 60;

// In full, unless that would be a row of zeros.
std::string realText(double value) {
    std::array<char, 32> digits{};
    char* const last = digits.data() + digits.size();
    auto end = std::to_chars(digits.data(), last, value, std::chars_format::fixed);
    if (end.ec != std::errc())
        end = std::to_chars(digits.data(), last, value);
    return {digits.data(), end.ptr};
}

KorString expectation(const Column& column) {
    if (column.isText())
        return translated("a text");
    return column.isReal() ? translated("a number") : translated("a whole number of 32 bits");
}

// What the column takes, where `value` is none of it.
KorString rangeText(const Column& column, const CellValue& value) {
    const std::string lowest = realText(column.minimum);
    const std::string highest = realText(column.maximum);
    const auto* real = std::get_if<double>(&value);
    // The largest length is no part of what people think of as the range.
    const bool isLength = real && column.kind == eColumnKind::kLength;
    const bool isTooLong = isLength && *real > column.maximum;
    if (isTooLong || column.minimum == -std::numeric_limits<double>::infinity())
        return KorString::format(translated("at most %s"), {highest});
    if (isLength || column.maximum == std::numeric_limits<double>::infinity())
        return KorString::format(translated("at least %s"), {lowest});
    return KorString::format(translated("from %s to %s"), {lowest, highest});
}

} // namespace

std::string quotedStart(std::string_view text) {
    if (!isCleanUtf8(text))
        return translated("a text that is no valid UTF-8").toStdString();
    std::size_t end = std::min(text.size(), kLongestText);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    const KorString start(text.substr(0, end));
    return KorString::format(end < text.size() ? translated("\"%s...\"") : translated("\"%s\""), {start})
        .toStdString();
}

std::string displayText(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return std::to_string(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return realText(sqlite3_value_double(value));
    case SQLITE_TEXT: {
        const auto* start = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return quotedStart({start, static_cast<std::size_t>(sqlite3_value_bytes(value))});
    }
    case SQLITE_BLOB:
        return translated("binary data").toStdString();
    default:
        return translated("nothing").toStdString();
    }
}

std::string displayText(const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return quotedStart(text->view());
    if (const auto* real = std::get_if<double>(&value))
        return realText(*real);
    return std::to_string(std::get<std::int64_t>(value));
}

ReadReport::~ReadReport() {
    if (const int more = m_count - kSentencesPerTable; more > 0)
        m_problems.push_back(
            {KorString::format(
                 translated("The table \"%s\" of \"%s\" has %s more cells or rows of this kind; "
                            "restore the database from a copy, or correct them one by one."),
                 {m_table.rowName(), m_file, KorString::number(more)})
                 .toStdString(),
             m_moreAreKept, &m_table});
}

void ReadReport::addMissingTable() {
    add(translated("The style database \"%s\" has no table \"%s\"; none of its rows can be shown or written, "
                   "restore the database from a copy."),
        {m_file, m_table.name});
}

void ReadReport::addMissingColumn(const Column& column) {
    add(translated("The style database \"%s\" has no column \"%s\" in its table \"%s\"; the default is shown "
                   "and cannot be changed, restore the database from a copy."),
        {m_file, column.name, m_table.name}, {.column = &column});
}

void ReadReport::addCell(const StructRecord& record, const Column& column, const std::string& stored,
                         bool kept) {
    const KorString name = m_table.columnName(column);
    const KorString key = KorString::number(record.key);
    if (kept)
        add(translated(
                "The style database \"%s\" holds %s in the column \"%s\" of the %s \"%s\" (key %s), which "
                "takes %s; enter a value to replace it."),
            {m_file, stored, name, m_table.rowName(), record.name, key,
             rangeText(column, column.read(&record))},
            {.kept = true});
    else
        add(translated(
                "The style database \"%s\" holds %s instead of %s in the column \"%s\" of the %s \"%s\" "
                "(key %s); %s is shown, enter a value to replace it."),
            {m_file, stored, expectation(column), name, m_table.rowName(), record.name, key,
             displayText(column.read(&record))},
            {.column = &column, .key = record.key});
}

void ReadReport::addRow(const std::string& key, bool isDuplicate) {
    add(isDuplicate
            ? translated("The style database \"%s\" holds a row in its table \"%s\" whose key is used twice "
                         "(%s); the row is left out, correct its key with a database tool.")
            : translated("The style database \"%s\" holds a row in its table \"%s\" whose key is no positive "
                         "whole number of 32 bits (%s); the row is left out, correct its key with a database "
                         "tool."),
        {m_file, m_table.name, key});
}

void ReadReport::add(const KorString& pattern, std::initializer_list<KorString> arguments,
                     ReadProblem problem) {
    if (++m_count > kSentencesPerTable) {
        m_moreAreKept = m_moreAreKept && problem.kept;
        return;
    }
    problem.table = &m_table;
    problem.sentence = KorString::format(pattern, arguments).toStdString();
    m_problems.push_back(std::move(problem));
}
