#include "services/KorUnitsManager.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace {

char g_decimalMark = '.';

struct UnitName {
    std::string_view name;
    double millimetres;
};

constexpr UnitName kUnitNames[] = {{"mm", 1.0},   {"cm", 10.0}, {"m", 1000.0}, {"in", 25.4},
                                   {"\"", 25.4}, {"ft", 304.8}, {"'", 304.8}};

void skipBlanks(std::string_view& text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
}

// Takes a number off the front: digits with either decimal mark, no exponent.
std::optional<double> takeNumber(std::string_view& text) {
    std::string digits;
    std::size_t length = 0;
    for (; length < text.size(); ++length) {
        const char c = text[length];
        if ((c >= '0' && c <= '9'))
            digits += c;
        else if (c == '.' || c == ',')
            digits += '.';
        else
            break;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    text.remove_prefix(length);
    return value;
}

double takeUnit(std::string_view& text, double fallback) {
    skipBlanks(text);
    for (const UnitName& unit : kUnitNames) {
        if (!text.starts_with(unit.name))
            continue;
        text.remove_prefix(unit.name.size());
        return unit.millimetres;
    }
    return fallback;
}

// A number with an optional fraction, "2 1/2" or "3/4".
std::optional<double> takeMixedNumber(std::string_view& text) {
    std::optional<double> value = takeNumber(text);
    if (!value)
        return value;
    if (!text.empty() && text.front() == '/') {
        text.remove_prefix(1);
        const auto divisor = takeNumber(text);
        return divisor && *divisor > 0.0 ? std::optional(*value / *divisor) : std::nullopt;
    }
    std::string_view rest = text;
    skipBlanks(rest);
    const auto numerator = takeNumber(rest);
    if (!numerator || rest.empty() || rest.front() != '/')
        return value;
    rest.remove_prefix(1);
    const auto divisor = takeNumber(rest);
    if (!divisor || *divisor <= 0.0)
        return std::nullopt;
    text = rest;
    return *value + *numerator / *divisor;
}

bool takeSign(std::string_view& text) {
    skipBlanks(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    skipBlanks(text);
    return negative;
}

// Fixed notation without needless zeros; more decimals than asked for where the value needs them.
std::string shortest(double value, int decimals) {
    std::array<char, 400> buffer{};
    for (int digits = decimals; digits <= 12; ++digits) {
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, digits).ptr;
        const double back = std::strtod(std::string(buffer.data(), end).c_str(), nullptr);
        if (digits < 12 && std::abs(back - value) > 1e-9 * std::max(1.0, std::abs(value)))
            continue;
        std::string text(buffer.data(), end);
        if (text.find('.') != std::string::npos) {
            text.erase(text.find_last_not_of('0') + 1);
            if (text.back() == '.')
                text.pop_back();
        }
        return text == "-0" ? "0" : text;
    }
    return {};
}

// Feet, inches and sixteenths; empty when the value is no multiple of 1/64 inch.
std::string feetInches(double inches) {
    const double sixtyFourths = std::round(inches * 64.0);
    if (std::abs(inches * 64.0 - sixtyFourths) > 1e-6 || std::abs(inches) > 1e7)
        return {};
    auto rest = static_cast<long long>(std::abs(sixtyFourths));
    const long long feet = rest / (64 * 12);
    rest %= 64 * 12;
    const long long whole = rest / 64;
    long long numerator = rest % 64;
    long long divisor = 64;
    while (numerator > 0 && numerator % 2 == 0) {
        numerator /= 2;
        divisor /= 2;
    }
    std::string text = sixtyFourths < 0 ? "-" : "";
    if (feet > 0)
        text += std::to_string(feet) + "'-";
    text += std::to_string(whole);
    if (numerator > 0)
        text += " " + std::to_string(numerator) + "/" + std::to_string(divisor);
    return text + "\"";
}

constexpr double kInch = 25.4;

constexpr KorUnit kPlainUnit("", KorUnitTransform(1.0, 0, false));
constexpr KorUnit kPaperUnit("mm", KorUnitTransform(1.0, 2, false));
constexpr KorUnit kMetricLength("mm", KorUnitTransform(1.0, 2, false));
constexpr KorUnit kImperialLength("in", KorUnitTransform(kInch, 4, true));

} // namespace

KorString KorUnitTransform::format(double value) const {
    if (!std::isfinite(value))
        return {};
    if (m_feetAndInches)
        if (const std::string text = feetInches(value / m_factor); !text.empty())
            return KorString(text);
    std::string text = shortest(value / m_factor, m_decimals);
    if (const auto point = text.find('.'); point != std::string::npos)
        text[point] = g_decimalMark;
    return KorString(m_feetAndInches ? text + "\"" : text);
}

std::optional<double> KorUnitTransform::parse(const KorString& text) const {
    const KorString trimmed = text.trimmed();
    std::string_view rest = trimmed.view();
    const bool negative = takeSign(rest);
    double sum = 0.0;
    bool any = false;
    while (!rest.empty()) {
        const auto number = takeMixedNumber(rest);
        if (!number)
            return std::nullopt;
        sum += *number * takeUnit(rest, m_factor);
        any = true;
        // Feet and inches may be joined by a hyphen: 1'-2 1/2"
        skipBlanks(rest);
        if (m_feetAndInches && !rest.empty() && rest.front() == '-')
            rest.remove_prefix(1);
        skipBlanks(rest);
        if (!m_feetAndInches && !rest.empty())
            return std::nullopt;
    }
    if (!any || !std::isfinite(sum))
        return std::nullopt;
    return negative ? -sum : sum;
}

std::optional<double> KorUnitTransform::parsePlain(const KorString& text) const {
    const KorString trimmed = text.trimmed();
    std::string_view rest = trimmed.view();
    const bool negative = takeSign(rest);
    const auto number = takeNumber(rest);
    if (!number || !rest.empty() || !std::isfinite(*number))
        return std::nullopt;
    return negative ? -*number : *number;
}

const KorUnitsManager& KorUnitsManager::metric() {
    static constexpr KorUnitsManager manager(false);
    return manager;
}

const KorUnitsManager& KorUnitsManager::imperial() {
    static constexpr KorUnitsManager manager(true);
    return manager;
}

const KorUnit& KorUnitsManager::getUnit(int kind) const {
    if (kind == kLength)
        return m_imperial ? kImperialLength : kMetricLength;
    return kind == kPaper ? kPaperUnit : kPlainUnit;
}

std::optional<double> KorUnitsManager::parse(const KorString& text, int kind) const {
    const KorUnitTransform& transform = getUnit(kind).getKorUnitTransform();
    return kind == kPlain ? transform.parsePlain(text) : transform.parse(text);
}

KorString KorUnitsManager::format(double value, int kind) const {
    return getUnit(kind).getKorUnitTransform().format(value);
}

char KorUnitsManager::decimalMark() {
    return g_decimalMark;
}

void KorUnitsManager::setDecimalMark(char mark) {
    g_decimalMark = mark == ',' ? ',' : '.';
}
