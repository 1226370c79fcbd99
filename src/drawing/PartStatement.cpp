#include "drawing/PartStatement.h"

#include "base/Translation.h"

#include <charconv>

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The pieces between blanks outside of quotes, without the quotes; a comment ends the line.
std::optional<std::vector<std::string>> pieces(std::string_view line) {
    std::vector<std::string> found;
    bool quoted = false;
    bool open = false;
    for (const char c : line) {
        if (c == '#' && !quoted)
            break;
        if (c == '"') {
            quoted = !quoted;
            if (!open)
                found.emplace_back();
            open = true;
        } else if (!quoted && kBlanks.find(c) != std::string_view::npos) {
            open = false;
        } else {
            if (!open)
                found.emplace_back();
            open = true;
            found.back() += c;
        }
    }
    if (quoted)
        return std::nullopt;
    return found;
}

std::optional<Vec3> pointIn(std::string_view text) {
    const std::vector<std::string> parts = splitText(text, ',');
    if (parts.size() != 2 && parts.size() != 3)
        return std::nullopt;
    double values[3] = {};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::optional<double> value = numberIn(parts[i]);
        if (!value)
            return std::nullopt;
        values[i] = *value;
    }
    return Vec3{values[0], values[1], values[2]};
}

} // namespace

std::vector<std::string> splitText(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find(separator, from), text.size());
        parts.emplace_back(trimmed(text.substr(from, to - from)));
        from = to + 1;
    }
    return parts;
}

std::optional<double> numberIn(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    constexpr double kMost = 1e6; // a kilometre of steel is no sample
    if (error != std::errc() || end != text.data() + text.size() || !(std::abs(value) <= kMost))
        return std::nullopt;
    return value;
}

PartStatement PartStatement::read(std::string_view line, std::string& error) {
    PartStatement statement;
    const auto found = pieces(line);
    if (!found) {
        error = translated("A quotation mark is missing.").toStdString();
        return statement;
    }
    for (const std::string& piece : *found) {
        const std::size_t equals = piece.find('=');
        if (statement.m_keyword.empty())
            statement.m_keyword = piece;
        else if (equals == std::string::npos)
            statement.m_words.push_back(piece);
        else if (!statement.m_values.emplace(piece.substr(0, equals), piece.substr(equals + 1)).second)
            error = KorString::format(translated("\"%s\" is given twice."), {piece.substr(0, equals)})
                        .toStdString();
    }
    return statement;
}

std::string PartStatement::text(const std::string& name) {
    const auto value = m_values.find(name);
    if (value == m_values.end())
        return {};
    m_taken[name] = true;
    return value->second;
}

double PartStatement::number(const std::string& name, double otherwise) {
    if (!has(name))
        return otherwise;
    const std::string value = text(name);
    const std::optional<double> number = numberIn(value);
    if (!number)
        fault(KorString::format(translated("\"%s\" of \"%s\" is no number up to a million."), {value, name})
                  .toStdString());
    return number.value_or(otherwise);
}

double PartStatement::size(const std::string& name) {
    const double value = number(name, 0);
    if (value <= 0)
        fault(KorString::format(translated("\"%s\" must be given and be above 0."), {name}).toStdString());
    return value;
}

Vec3 PartStatement::point(const std::string& name, const Vec3& otherwise) {
    if (!has(name))
        return otherwise;
    const std::optional<Vec3> point = pointIn(text(name));
    if (!point)
        fault(
            KorString::format(translated("\"%s\" must be a point such as 100,0,-25."), {name}).toStdString());
    return point.value_or(otherwise);
}

std::vector<Vec3> PartStatement::points(const std::string& name) {
    std::vector<Vec3> all;
    for (const std::string& part : splitText(text(name), ';')) {
        const std::optional<Vec3> point = pointIn(part);
        if (!point)
            fault(KorString::format(translated("\"%s\" must be points such as 0,0;100,0;100,50."), {name})
                      .toStdString());
        all.push_back(point.value_or(Vec3{}));
    }
    return all;
}

std::vector<double> PartStatement::numbers(const std::string& name) {
    std::vector<double> all;
    for (const std::string& part : list(name)) {
        const std::optional<double> number = numberIn(part);
        if (!number)
            fault(KorString::format(translated("\"%s\" must be numbers such as 300,150,7.1."), {name})
                      .toStdString());
        all.push_back(number.value_or(0));
    }
    return all;
}

std::vector<std::string> PartStatement::list(const std::string& name) {
    return has(name) ? splitText(text(name), ',') : std::vector<std::string>();
}

void PartStatement::fault(const std::string& sentence) {
    if (m_fault.empty())
        m_fault = sentence;
}

std::string PartStatement::findings() const {
    if (!m_fault.empty())
        return m_fault;
    for (const auto& [name, value] : m_values)
        if (!m_taken.contains(name))
            return KorString::format(translated("\"%s\" is not known here."), {name}).toStdString();
    return {};
}
