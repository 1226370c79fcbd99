#include "base/LabelFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr std::string_view kMark = "{L1}";
constexpr std::string_view kBreak = "{br}";
constexpr std::array<std::pair<std::string_view, char>, 4> kFamilyEscapes = {
    {{"%25", '%'}, {"%3B", ';'}, {"%7B", '{'}, {"%7D", '}'}}};

// The locale must not have a say here: a stored label reads the same everywhere.
constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isVersionName(std::string_view name) {
    return name.size() > 1 && name.front() == 'L' && std::ranges::all_of(name.substr(1), isDigit);
}

bool hasVersionMark(std::string_view text) {
    const auto end = text.find('}');
    return text.starts_with('{') && end != std::string_view::npos && isVersionName(text.substr(1, end - 1));
}

template <typename Number>
std::optional<Number> readNumber(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

bool readFlag(std::string_view value, bool& flag) {
    flag = value == "1";
    return flag || value == "0";
}

bool readFamily(std::string_view value, KorString& font) {
    font = KorString(value);
    for (auto it = kFamilyEscapes.rbegin(); it != kFamilyEscapes.rend(); ++it)
        font = font.replaced(KorString(it->first), KorString(std::string_view(&it->second, 1)));
    return !font.isEmpty();
}

bool readSize(std::string_view value, double& size) {
    const auto number = value.empty() || !isDigit(value.front()) ? std::nullopt : readNumber<double>(value);
    size = number.value_or(0);
    return size > 0 && std::isfinite(size);
}

bool readColor(std::string_view value, int& color) {
    color = readNumber<int>(value).value_or(-1);
    return color >= 0 && color <= 256;
}

bool readAttribute(std::string_view attribute, LabelStyle& style) {
    const auto equals = attribute.find('=');
    if (equals == std::string_view::npos)
        return false;
    const std::string_view name = attribute.substr(0, equals);
    const std::string_view value = attribute.substr(equals + 1);
    return (name == "font" && readFamily(value, style.font)) ||
           (name == "size" && readSize(value, style.size)) ||
           (name == "color" && readColor(value, style.color)) ||
           (name == "b" && readFlag(value, style.bold)) || (name == "i" && readFlag(value, style.italic)) ||
           (name == "u" && readFlag(value, style.underline));
}

bool readFormat(std::string_view attributes, LabelStyle& style) {
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = attributes.find(';');
        if (!readAttribute(attributes.substr(0, end), style))
            return false;
        attributes.remove_prefix(end == std::string_view::npos ? attributes.size() : end + 1);
    }
    return true;
}

// What stands between braces: a line break, a variable or a format.
bool readBraces(std::string_view inside, LabelRuns& runs, LabelStyle& style) {
    if (inside == "br")
        runs.push_back({LabelRun::kLineBreak, KorString(), style});
    else if (LabelFormat::isVariableName(inside))
        runs.push_back({LabelRun::kVariable, KorString(inside), style});
    else
        return readFormat(inside, style);
    return true;
}

// Takes one element off the front of `rest`, which is not empty. False when it is not understood.
bool readElement(std::string_view& rest, LabelRuns& runs, LabelStyle& style) {
    const auto brace = rest.find_first_of("{}");
    if (brace != 0) {
        LabelFormat::appendText(runs, rest.substr(0, brace), style);
        rest.remove_prefix(std::min(brace, rest.size()));
        return true;
    }
    if (rest.starts_with("{{") || rest.starts_with("}}")) {
        LabelFormat::appendText(runs, rest.substr(0, 1), style);
        rest.remove_prefix(2);
        return true;
    }
    const auto end = rest.find_first_of("{}", 1);
    if (rest.front() == '}' || end == std::string_view::npos || rest[end] != '}' ||
        !readBraces(rest.substr(1, end - 1), runs, style))
        return false;
    rest.remove_prefix(end + 1);
    return true;
}

std::string familyText(std::string_view family) {
    std::string out;
    for (const char c : family) {
        const auto escape = std::ranges::find(kFamilyEscapes, c, [](const auto& e) { return e.second; });
        out += escape == kFamilyEscapes.end() ? std::string_view(&c, 1) : escape->first;
    }
    return out;
}

// The shortest form that reads back as the same number, never with an exponent.
std::string sizeText(double size) {
    std::array<char, 400> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), size, std::chars_format::fixed);
    return std::string(buffer.data(), end.ptr);
}

void writeStyleChange(std::string& out, const LabelStyle& from, const LabelStyle& to) {
    std::string attributes;
    const auto add = [&](std::string_view name, const std::string& value) {
        attributes.append(attributes.empty() ? "{" : ";").append(name).append("=").append(value);
    };
    if (to.font != from.font)
        add("font", familyText(to.font.view()));
    if (to.size != from.size)
        add("size", sizeText(to.size));
    if (to.color != from.color)
        add("color", std::to_string(to.color));
    if (to.bold != from.bold)
        add("b", to.bold ? "1" : "0");
    if (to.italic != from.italic)
        add("i", to.italic ? "1" : "0");
    if (to.underline != from.underline)
        add("u", to.underline ? "1" : "0");
    if (!attributes.empty())
        out.append(attributes).append("}");
}

void writeText(std::string& out, std::string_view text) {
    LabelRuns lines;
    LabelFormat::appendText(lines, text, LabelStyle());
    for (const LabelRun& line : lines) {
        if (line.kind == LabelRun::kLineBreak)
            out.append(kBreak);
        for (const char c : line.text.view())
            out.append(c == '{' || c == '}' ? 2 : 1, c);
    }
}

void writeRun(std::string& out, const LabelRun& run) {
    if (run.kind == LabelRun::kLineBreak)
        out.append(kBreak);
    else if (run.kind == LabelRun::kVariable && LabelFormat::isVariableName(run.text.view()))
        out.append("{").append(run.text.view()).append("}");
    else
        writeText(out, run.text.view());
}

} // namespace

namespace LabelFormat {

LabelReading parse(const KorString& text, const LabelStyle& defaults) {
    LabelReading reading;
    std::string_view rest = text.view();
    if (!hasVersionMark(rest)) {
        reading.outcome = rest.empty() ? LabelReading::kLabel : LabelReading::kPlain;
        appendText(reading.runs, rest, defaults);
        return reading;
    }
    if (!rest.starts_with(kMark)) {
        reading.outcome = LabelReading::kOtherVersion;
        return reading;
    }
    rest.remove_prefix(kMark.size());
    LabelStyle style = defaults;
    while (!rest.empty()) {
        if (!readElement(rest, reading.runs, style))
            return {LabelReading::kNotUnderstood, {}, text.size() - rest.size()};
    }
    return reading;
}

KorString write(const LabelRuns& runs, const LabelStyle& defaults) {
    std::string out(kMark);
    LabelStyle current = defaults;
    for (const LabelRun& run : runs) {
        LabelStyle style = run.style;
        if (style.font.isEmpty())
            style.font = defaults.font;
        writeStyleChange(out, current, style);
        current = style;
        writeRun(out, run);
    }
    return runs.empty() ? KorString() : KorString(out);
}

void append(LabelRuns& runs, LabelRun run) {
    if (run.kind == LabelRun::kText && run.text.isEmpty())
        return;
    if (run.kind == LabelRun::kText && !runs.empty() && runs.back().kind == LabelRun::kText &&
        runs.back().style == run.style)
        runs.back().text = runs.back().text + run.text;
    else
        runs.push_back(std::move(run));
}

void appendText(LabelRuns& runs, std::string_view text, const LabelStyle& style) {
    while (true) {
        const auto end = text.find_first_of("\r\n");
        append(runs, {LabelRun::kText, KorString(text.substr(0, end)), style});
        if (end == std::string_view::npos)
            return;
        append(runs, {LabelRun::kLineBreak, KorString(), style});
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

bool isVariableName(std::string_view name) {
    return !name.empty() && isLetter(name.front()) && name != "br" && !isVersionName(name) &&
           std::ranges::all_of(
               name, [](char c) { return isLetter(c) || isDigit(c) || c == '_' || c == '-' || c == '.'; });
}

} // namespace LabelFormat
