#include "data/store/odbc/OdbcError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using enum OdbcError::eKind;

struct Meaning {
    std::string_view text; ///< with what the state begins, or what the message holds
    OdbcError::eKind kind;
};

constexpr Meaning kStates[] = {
    {"IM002", kNoDriver}, {"IM003", kNoDriver},   {"IM004", kNoDriver}, {"IM005", kNoDriver},
    {"28", kLogin},       {"3D000", kNoDatabase}, {"3F000", kNoSchema}, {"42P01", kNoSchema},
    {"42S02", kNoSchema}, {"42501", kRights},     {"55P03", kLocked},   {"40", kLocked},
    {"HYT00", kLocked},   {"23505", kKeyTaken},   {"23000", kKeyTaken}, {"08", kLost},
    {"57P0", kLost},      {"25P03", kLost},
};

// While connecting everything has one state, and only the words differ.
constexpr Meaning kWordsOfConnecting[] = {
    {"Can't open lib", kNoDriver},         {"Data source name not found", kNoDriver},
    {"no password supplied", kNoPassword}, {"authentication failed", kLogin},
    {"no pg_hba.conf entry", kLogin},      {"is not permitted to log in", kLogin},
};

// A file engine behind a driver says everything in words.
constexpr Meaning kWords[] = {
    {"database is locked", kLocked},
    {"UNIQUE constraint failed", kKeyTaken},
    {"no such table", kNoSchema},
    {"attempt to write a readonly database", kRights},
};

template <std::size_t N>
OdbcError::eKind kindIn(const Meaning (&meanings)[N], std::string_view message) {
    const auto* it = std::ranges::find_if(
        meanings, [&](const Meaning& each) { return message.find(each.text) != std::string_view::npos; });
    return it == std::end(meanings) ? kNone : it->kind;
}

OdbcError::eKind kindOfConnecting(std::string_view message) {
    if (const auto kind = kindIn(kWordsOfConnecting, message); kind != kNone)
        return kind;
    if (message.find("does not exist") == std::string_view::npos)
        return kNotReached;
    return message.find("database \"") != std::string_view::npos ? kNoDatabase : kLogin;
}

std::string inOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    text.erase(text.find_last_not_of(" ;.") + 1);
    return text;
}

} // namespace

OdbcError OdbcError::of(const std::string& state, const std::string& message, bool isConnecting) {
    const std::string line = inOneLine(message);
    if (isConnecting && (state.starts_with("08") || state.starts_with("01") || state.starts_with("HY")))
        return {kindOfConnecting(line), line};
    const auto* it =
        std::ranges::find_if(kStates, [&](const Meaning& each) { return state.starts_with(each.text); });
    if (it != std::end(kStates))
        return {it->kind, line};
    const eKind worded = kindIn(kWords, line);
    return {worded == kNone ? kOther : worded, line};
}
