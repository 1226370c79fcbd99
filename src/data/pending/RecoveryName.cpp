#include "data/pending/RecoveryName.h"

#include <algorithm>
#include <cstdint>

namespace RecoveryName {

namespace {

constexpr std::string_view kStart = "recovery-";

// FNV-1a.
std::string withCheck(const std::string& name) {
    std::uint64_t check = 14695981039346656037U;
    for (const char letter : name)
        check = (check ^ static_cast<unsigned char>(letter)) * 1099511628211U;
    return name + "-" + std::to_string(check);
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::string of(pid_t process, int number) {
    return withCheck(std::string(kStart) + std::to_string(process) + "-" + std::to_string(number));
}

bool isProven(std::string_view name) {
    const auto check = name.rfind('-');
    return name.starts_with(kStart) && check > kStart.size() &&
           withCheck(std::string(name.substr(0, check))) == name;
}

bool isPossible(std::string_view name) {
    if (isProven(name))
        return true;
    if (!name.starts_with(kStart))
        return false;
    const std::string_view rest = name.substr(kStart.size());
    const auto dash = rest.find('-');
    return isNumber(rest.substr(0, dash)) &&
           (dash == std::string_view::npos || isNumber(rest.substr(dash + 1)));
}

} // namespace RecoveryName
