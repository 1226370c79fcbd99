#include "drawing/PropertyTest.h"

#include "drawing/PartStatement.h"

namespace {

using Properties = std::map<std::string, PropertyValue>;

bool isName(const std::string& text) {
    return std::ranges::all_of(text, [](unsigned char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

bool isValue(const std::string& value) {
    return !value.empty() && value.find_first_of("=,()") == std::string::npos &&
           value.find('*') >= value.size() - 1;
}

// Reads a comparison into the test. Returns whether it is one.
bool isComparison(std::string_view text, PropertyTest& test) {
    std::string name;
    if (const auto equals = text.find('='); equals != std::string_view::npos) {
        name = splitText(text.substr(0, equals), '\n')[0];
        test.values = {splitText(text.substr(equals + 1), '\n')[0]};
    } else {
        const auto open = text.find('(');
        if (open == std::string_view::npos || text.back() != ')')
            return false;
        const std::string before = splitText(text.substr(0, open), '\n')[0];
        if (before != "in" && !before.ends_with(" in"))
            return false;
        name = splitText(std::string_view(before).substr(0, before.size() - 2), '\n')[0];
        test.values = splitText(text.substr(open + 1, text.size() - open - 2), ',');
    }
    if (!name.empty())
        test.property = name;
    return isName(name) && std::ranges::all_of(test.values, isValue);
}

bool fits(const PropertyValue& property, const std::string& value) {
    if (value.ends_with('*'))
        return property.text.starts_with(value.substr(0, value.size() - 1));
    const std::optional<double> number = numberIn(value);
    return property.text == value || (number && property.number && *number == *property.number);
}

} // namespace

eAnswer operator!(eAnswer answer) {
    return answer == eAnswer::kUnknown ? answer : answer == eAnswer::kYes ? eAnswer::kNo : eAnswer::kYes;
}

eAnswer operator&&(eAnswer a, eAnswer b) {
    if (a == eAnswer::kNo || b == eAnswer::kNo)
        return eAnswer::kNo;
    return a == eAnswer::kUnknown ? a : b;
}

eAnswer operator||(eAnswer a, eAnswer b) {
    return !(!a && !b);
}

PropertyTest PropertyTest::read(std::string_view expression, double minimum, double maximum,
                                const std::string& property) {
    const std::string text = splitText(expression, '\n')[0];
    PropertyTest test;
    test.property = property;
    test.minimum = minimum;
    test.maximum = maximum;
    if (text == "between" || (text.empty() && (minimum != 0 || maximum != 0)))
        test.kind = kRange;
    else if (text.empty())
        test.kind = kPresent;
    else if (isComparison(text, test))
        test.kind = kOneOf;
    return test;
}

eAnswer PropertyTest::holds(const Properties& properties) const {
    const auto answer = [](bool yes) { return yes ? eAnswer::kYes : eAnswer::kNo; };
    const auto found = properties.find(property);
    if (kind == kNotUnderstood)
        return eAnswer::kUnknown;
    if (found == properties.end() || kind == kPresent)
        return answer(found != properties.end());
    if (kind == kOneOf)
        return answer(std::ranges::any_of(values, [&](const auto& v) { return fits(found->second, v); }));
    const std::optional<double>& number = found->second.number;
    return number ? answer(*number >= minimum && *number <= maximum) : eAnswer::kUnknown;
}
