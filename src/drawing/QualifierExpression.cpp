#include "drawing/QualifierExpression.h"

#include "drawing/PartStatement.h"

namespace {

using Properties = std::map<std::string, PropertyValue>;

struct Comparison {
    std::string name; ///< empty: the property of the qualifier
    std::vector<std::string> values;
};

bool isName(const std::string& text) {
    return std::ranges::all_of(text, [](unsigned char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

bool isValue(const std::string& value) {
    return !value.empty() && value.find_first_of("=,()") == std::string::npos &&
           value.find('*') >= value.size() - 1;
}

std::optional<Comparison> understood(std::string_view text) {
    Comparison comparison;
    std::string values;
    if (const auto equals = text.find('='); equals != std::string_view::npos) {
        comparison.name = splitText(text.substr(0, equals), '\n')[0];
        comparison.values = {splitText(text.substr(equals + 1), '\n')[0]};
    } else {
        const auto open = text.find('(');
        const std::string whole = splitText(text, '\n')[0];
        if (open == std::string_view::npos || whole.back() != ')')
            return std::nullopt;
        std::string before = splitText(text.substr(0, open), '\n')[0];
        const bool isIn = before == "in" || before.ends_with(" in");
        if (!isIn)
            return std::nullopt;
        comparison.name = splitText(std::string_view(before).substr(0, before.size() - 2), '\n')[0];
        const auto close = text.rfind(')');
        comparison.values = splitText(text.substr(open + 1, close - open - 1), ',');
    }
    if (!isName(comparison.name) || !std::ranges::all_of(comparison.values, isValue))
        return std::nullopt;
    return comparison;
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

eAnswer QualifierExpression::holds(std::string_view expression, double minimum, double maximum,
                                   const std::string& property, const Properties& properties) {
    const std::string text = splitText(expression, '\n')[0];
    const auto answer = [](bool yes) { return yes ? eAnswer::kYes : eAnswer::kNo; };
    if (text == "between" || (text.empty() && (minimum != 0 || maximum != 0))) {
        const auto found = properties.find(property);
        if (found == properties.end())
            return eAnswer::kNo;
        if (!found->second.number)
            return eAnswer::kUnknown;
        return answer(*found->second.number >= minimum && *found->second.number <= maximum);
    }
    if (text.empty())
        return answer(properties.contains(property));
    const std::optional<Comparison> comparison = understood(text);
    if (!comparison)
        return eAnswer::kUnknown;
    const auto found = properties.find(comparison->name.empty() ? property : comparison->name);
    return answer(found != properties.end() && std::ranges::any_of(comparison->values, [&](const auto& v) {
                      return fits(found->second, v);
                  }));
}
