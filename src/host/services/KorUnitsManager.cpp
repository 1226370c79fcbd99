#include "services/KorUnitsManager.h"

#include "base/KorAssert.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

char g_decimalMark = '.';

constexpr double kInch = 25.4;
constexpr double kFoot = 304.8; // twelve times 25.4 is a little less in binary

struct KindOfUnit {
    int kind;
    KorUnit metric;
    KorUnit imperial;
};

constexpr KorUnit kPlainUnit("", KorUnitTransform(1.0, false));
constexpr KorUnit kMillimetres("mm", KorUnitTransform(1.0, false));
constexpr KorUnit kFeetAndInches("in", KorUnitTransform(kInch, true));

constexpr KindOfUnit kKinds[] = {
    {KorUnitsManager::kPlain, kPlainUnit, kPlainUnit},
    {KorUnitsManager::kPaper, kMillimetres, kFeetAndInches},
    {KorUnitsManager::kLength, kMillimetres, kFeetAndInches},
};

struct UnitName {
    std::string_view name; // in lower case; a name stands before those that it begins with
    double millimetres;
};

constexpr UnitName kUnitNames[] = {
    {"mm", 1.0},   {"cm", 10.0},  {"m", 1000.0}, {"inches", kInch}, {"inch", kInch}, {"in", kInch},
    {"\"", kInch}, {"''", kInch}, {"″", kInch},  {"”", kInch},      {"feet", kFoot}, {"foot", kFoot},
    {"ft", kFoot}, {"'", kFoot},  {"′", kFoot},  {"’", kFoot},
};

void skipBlanks(std::string_view& text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
}

// A mark that is not the decimal mark in use may separate thousands: three digits come after it, and one to
// three before it, which don't begin with 0.
bool separatesThousands(std::string_view digits) {
    const auto mark = digits.find_first_of(".,");
    return mark != std::string_view::npos && digits[mark] != g_decimalMark && digits.size() - mark == 4 &&
           mark >= 1 && mark <= 3 && digits.front() != '0';
}

// Takes a number off the front: digits with either decimal mark, no exponent, no thousands marks.
std::optional<double> takeNumber(std::string_view& text) {
    const auto length = std::min(text.find_first_not_of("0123456789.,"), text.size());
    std::string digits(text.substr(0, length));
    if (separatesThousands(digits))
        return std::nullopt;
    std::ranges::replace(digits, ',', '.');
    double value = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    text.remove_prefix(length);
    return value;
}

std::optional<double> takeFraction(std::string_view& text) {
    const auto numerator = takeNumber(text);
    if (!numerator || !text.starts_with('/'))
        return std::nullopt;
    text.remove_prefix(1);
    const auto divisor = takeNumber(text);
    return divisor && *divisor > 0.0 ? std::optional(*numerator / *divisor) : std::nullopt;
}

// A number with an optional fraction: "2", "3/4" or "2 1/2".
std::optional<double> takeMixedNumber(std::string_view& text) {
    std::string_view ahead = text;
    if (const auto fraction = takeFraction(ahead)) {
        text = ahead;
        return fraction;
    }
    const auto whole = takeNumber(text);
    ahead = text;
    skipBlanks(ahead);
    const auto fraction = whole ? takeFraction(ahead) : std::nullopt;
    if (!fraction)
        return whole;
    text = ahead;
    return *whole + *fraction;
}

struct Quantity {
    double number = 0.0;
    double unit = 0.0; // millimetres
};

std::optional<Quantity> takeQuantity(std::string_view& text, double defaultUnit) {
    const auto number = takeMixedNumber(text);
    if (!number)
        return std::nullopt;
    skipBlanks(text);
    Quantity quantity{*number, defaultUnit};
    const auto* unit =
        std::ranges::find_if(kUnitNames, [&](const UnitName& u) { return text.starts_with(u.name); });
    if (unit != std::end(kUnitNames)) {
        quantity.unit = unit->millimetres;
        text.remove_prefix(unit->name.size());
        skipBlanks(text);
    }
    return quantity;
}

bool takeSign(std::string_view& text) {
    skipBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    skipBlanks(text);
    return negative;
}

// Twelve significant digits hide what conversions leave behind (304.79999999999995) and keep what people
// type.
std::string decimalText(double value) {
    std::array<char, 400> buffer{};
    const auto print = [&buffer](double number, auto... how) {
        return std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, how...).ptr;
    };
    const char* end = print(value, std::chars_format::general, 12);
    double rounded = 0.0;
    std::from_chars(buffer.data(), end, rounded);
    std::string text(buffer.data(), print(rounded, std::chars_format::fixed));
    return text == "-0" ? "0" : text;
}

// Feet, inches and the fraction in lowest terms; empty when the value is no whole number of 64ths.
std::string feetInches(double inches) {
    const double sixtyFourths = std::round(inches * 64.0);
    if (std::abs(inches * 64.0 - sixtyFourths) > 1e-9 * std::max(1.0, std::abs(sixtyFourths)) ||
        std::abs(inches) > 1e7)
        return {};
    auto rest = static_cast<long long>(std::abs(sixtyFourths));
    constexpr long long kPartsOfAFoot = 64LL * 12;
    const long long feet = rest / kPartsOfAFoot;
    rest %= kPartsOfAFoot;
    long long numerator = rest % 64;
    long long divisor = 64;
    while (numerator > 0 && numerator % 2 == 0) {
        numerator /= 2;
        divisor /= 2;
    }
    std::string text = sixtyFourths < 0 ? "-" : "";
    if (feet > 0)
        text += std::to_string(feet) + "'-";
    const long long whole = rest / 64;
    if (whole > 0 || feet > 0 || numerator == 0)
        text += std::to_string(whole) + (numerator > 0 ? " " : "");
    if (numerator > 0)
        text += std::to_string(numerator) + "/" + std::to_string(divisor);
    return text + "\"";
}

std::optional<double> finite(double value, bool negative) {
    return std::isfinite(value) ? std::optional(negative ? -value : value) : std::nullopt;
}

} // namespace

KorString KorUnitTransform::format(double value) const {
    if (!std::isfinite(value))
        return {};
    if (m_feetAndInches)
        if (const std::string text = feetInches(value / m_factor); !text.empty())
            return KorString(text);
    std::string text = decimalText(value / m_factor);
    std::ranges::replace(text, '.', g_decimalMark);
    return KorString(m_feetAndInches ? text + "\"" : text);
}

std::optional<double> KorUnitTransform::parse(const KorString& text) const {
    const KorString folded = text.trimmed().lowered();
    std::string_view rest = folded.view();
    const bool negative = takeSign(rest);
    const auto first = takeQuantity(rest, m_factor);
    if (!first)
        return std::nullopt;
    double sum = first->number * first->unit;
    if (!rest.empty() && first->unit == kFoot) {
        if (rest.starts_with('-'))
            rest.remove_prefix(1);
        skipBlanks(rest);
        const auto inches = takeQuantity(rest, kInch);
        if (!inches || inches->unit != kInch)
            return std::nullopt;
        sum += inches->number * kInch;
    }
    return rest.empty() ? finite(sum, negative) : std::nullopt;
}

std::optional<double> KorUnitTransform::parsePlain(const KorString& text) const {
    const KorString trimmed = text.trimmed();
    std::string_view rest = trimmed.view();
    const bool negative = takeSign(rest);
    const auto number = takeNumber(rest);
    skipBlanks(rest);
    if (!number || (!rest.empty() && rest != "°"))
        return std::nullopt;
    return finite(*number, negative);
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
    const auto* row = std::ranges::find(kKinds, kind, &KindOfUnit::kind);
    if (!KorAssert::check(row != std::end(kKinds), "the unit kind is known"))
        return kPlainUnit;
    return m_imperial ? row->imperial : row->metric;
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
