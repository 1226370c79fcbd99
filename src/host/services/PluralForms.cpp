#include "services/PluralForms.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

struct Rule {
    const char* name;
    std::size_t (*place)(std::int64_t number);
};

bool endsIn(std::int64_t number, std::int64_t first, std::int64_t last) {
    const std::int64_t ten = number % 10;
    const std::int64_t hundred = number % 100;
    return ten >= first && ten <= last && hundred / 10 != 1;
}

constexpr std::array kRules = {
    Rule{"one-other", [](std::int64_t n) -> std::size_t { return n == 1 ? 0 : 1; }},
    Rule{"other", [](std::int64_t) -> std::size_t { return 0; }},
    Rule{"zero-one-other", [](std::int64_t n) -> std::size_t { return n <= 1 ? 0 : 1; }},
    Rule{"east-slavic",
         [](std::int64_t n) -> std::size_t { return endsIn(n, 1, 1)   ? 0
                                                    : endsIn(n, 2, 4) ? 1
                                                                      : 2; }},
    Rule{"west-slavic", [](std::int64_t n) -> std::size_t { return n == 1             ? 0
                                                                   : n >= 2 && n <= 4 ? 1
                                                                                      : 2; }},
    Rule{"polish", [](std::int64_t n) -> std::size_t { return n == 1            ? 0
                                                              : endsIn(n, 2, 4) ? 1
                                                                                : 2; }},
};

} // namespace

bool PluralForms::isKnown(const std::string& rule) {
    return std::ranges::any_of(kRules, [&rule](const Rule& known) { return known.name == rule; });
}

std::size_t PluralForms::formFor(const std::string& rule, std::int64_t number) {
    const auto found =
        std::ranges::find_if(kRules, [&rule](const Rule& known) { return known.name == rule; });
    return (found == kRules.end() ? kRules.front() : *found).place(std::abs(number));
}

KorString PluralForms::choose(const KorString& forms, std::size_t place) {
    std::string_view rest = forms.view();
    for (; place > 0; --place) {
        const std::size_t bar = rest.find('|');
        if (bar == std::string_view::npos)
            break;
        rest.remove_prefix(bar + 1);
    }
    return KorString(rest.substr(0, rest.find('|')));
}
