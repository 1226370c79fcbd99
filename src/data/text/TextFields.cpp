#include "data/text/TextFields.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace TextFields {

namespace {

constexpr std::string_view kBlanks = " \t";

// The name that a numbered column shares with its neighbours, or nothing.
std::string stemOf(const Column& column) {
    const auto end = column.name.find_last_not_of("0123456789");
    const bool isNumbered = end + 1 < column.name.size() && end > 0 && column.name[end] == '_';
    return isNumbered ? column.name.substr(0, end) : std::string();
}

std::optional<char> meaningOf(char sign) {
    switch (sign) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 's':
        return ' ';
    default:
        break;
    }
    const bool isPlain = sign > ' ' && sign < 0x7F && !std::isalnum(static_cast<unsigned char>(sign));
    return isPlain ? std::optional(sign) : std::nullopt;
}

std::string escapedSign(char sign, bool isFirst, bool isAtEnd) {
    switch (sign) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    case ' ':
        return isAtEnd ? "\\s" : " ";
    case '#':
    case '[':
    case '<':
        return isFirst ? std::string{'\\', sign} : std::string{sign};
    case '\\':
    case '|':
        return {'\\', sign};
    default:
        return {sign};
    }
}

template <typename Number>
std::optional<Number> toNumber(std::string_view text) {
    Number value{};
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    return error == std::errc() && end == last ? std::optional(value) : std::nullopt;
}

} // namespace

std::vector<TextColumn> columnsOf(const TableSchema& table) {
    std::vector<TextColumn> columns;
    std::string stem;
    for (const Column& column : table.columns) {
        const std::string own = stemOf(column);
        if (own.empty() || own != stem)
            columns.push_back({own.empty() ? column.name : own + "s", {}});
        columns.back().cells.push_back(&column);
        stem = own;
    }
    return columns;
}

bool isPartTable(const TableSchema& table) {
    return std::ranges::any_of(table.columns, [](const Column& column) {
        return column.isReference() && column.role == eReferenceRole::kPartOf;
    });
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == separator) {
            parts.push_back(trimmed(text.substr(start, i - start)));
            start = i + 1;
        }
    }
    parts.push_back(trimmed(text.substr(start)));
    return parts;
}

std::string escaped(std::string_view text) {
    std::string field;
    for (std::size_t i = 0; i < text.size(); ++i)
        field += escapedSign(text[i], i == 0, i == 0 || i + 1 == text.size());
    return field;
}

std::optional<std::string> unescaped(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        std::optional<char> sign = field[i];
        if (field[i] == '\\')
            sign = ++i < field.size() ? meaningOf(field[i]) : std::nullopt;
        if (!sign)
            return std::nullopt;
        text += *sign;
    }
    return text;
}

std::string number(double value) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::optional<double> toReal(std::string_view text) {
    const auto slash = text.find('/');
    const auto above = toNumber<double>(trimmed(text.substr(0, slash)));
    const auto below = slash == std::string_view::npos ? std::optional(1.0)
                                                       : toNumber<double>(trimmed(text.substr(slash + 1)));
    const double value = above && below ? *above / *below : std::nan("");
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<std::int64_t> toInteger(std::string_view text) {
    return toNumber<std::int64_t>(text);
}

} // namespace TextFields
