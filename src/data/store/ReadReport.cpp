#include "base/Utf8.h"
#include "data/store/ReadReport.h"


#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace {

constexpr int kSentencesPerTable = 20;
constexpr std::size_t kLongestText = 60;

std::string realText(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), end.ptr};
}

std::string quotedStart(std::string_view text) {
    if (!isCleanUtf8(text))
        return "a text that is no valid UTF-8";
    std::size_t end = std::min(text.size(), kLongestText);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return '"' + std::string(text.substr(0, end)) + (end < text.size() ? "...\"" : "\"");
}

const char* expectation(const Column& column) {
    if (column.isText())
        return "a text";
    return column.isReal() ? "a number" : "a whole number of 32 bits";
}

std::string rangeText(const Column& column) {
    if (column.minimum == -std::numeric_limits<double>::infinity())
        return "the range up to " + realText(column.maximum);
    if (column.maximum == std::numeric_limits<double>::infinity())
        return "the range from " + realText(column.minimum);
    return "the range from " + realText(column.minimum) + " to " + realText(column.maximum);
}

} // namespace

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
        return "binary data";
    default:
        return "nothing";
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
        m_problems.push_back({"The table \"" + m_table.rowName() + "\" of \"" + m_file + "\" has " +
                              std::to_string(more) +
                              " more cells or rows of this kind; restore the file from a "
                              "copy, or correct them one by one."});
}

void ReadReport::addMissingTable() {
    add("has no table \"" + m_table.name +
        "\"; none of its rows can be shown or written, restore the file from "
        "a copy.");
}

void ReadReport::addMissingColumn(const Column& column) {
    add("has no column \"" + column.name + "\" in its table \"" + m_table.name +
        "\"; the default is shown and cannot be changed, restore the file from a copy.");
}

void ReadReport::addCell(const StructRecord& record, const Column& column, sqlite3_value* stored, bool kept) {
    const std::string place = " in the column \"" + column.name + "\" of the " + m_table.rowName() + " \"" +
                              record.name.toStdString() + "\" (key " + std::to_string(record.key) + ")";
    if (kept)
        add("holds " + displayText(stored) + place + ", outside " + rangeText(column) +
                "; enter a value to "
                "replace it.",
            true);
    else
        add("holds " + displayText(stored) + " instead of " + expectation(column) + place + "; " +
            displayText(column.read(&record)) + " is shown, enter a value to replace it.");
}

void ReadReport::addRow(sqlite3_value* key, bool isDuplicate) {
    add(std::string("holds a row in its table \"") + m_table.name + "\" whose key " +
        (isDuplicate ? "is used twice (" : "is no positive whole number of 32 bits (") + displayText(key) +
        "); the row is left out, correct its key with a database tool.");
}

void ReadReport::add(const std::string& text, bool kept) {
    if (++m_count <= kSentencesPerTable)
        m_problems.push_back({"The style database \"" + m_file + "\" " + text, kept});
}
