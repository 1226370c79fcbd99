#include "data/store/FileGuards.h"

#include "data/store/FileIdentity.h"
#include "data/store/LeftJournal.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <thread>

namespace {

constexpr std::int64_t kSmallFile = 16 << 20; // bytes that are checked in less than a tenth of a second

// Whether the text of a default is one literal. Whoever opens the file did not choose what else it may be.
bool isLiteral(std::string text) {
    if (text.empty())
        return true;
    if (text.front() == '\'') {
        const auto end = text.find('\'', 1);
        return end == text.size() - 1 || (end != std::string::npos && end + 1 < text.size() &&
                                          text[end + 1] == '\'' && isLiteral(text.substr(end + 1)));
    }
    return text.find_first_not_of("+-.0123456789eE") == std::string::npos ||
           text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_") ==
               std::string::npos;
}

// The engine tells of a read error or a lack of memory in the words of its findings about damage.
int readErrorIn(const std::string& finding) {
    constexpr std::string_view kMark = "error code";
    const auto mark = finding.find(kMark);
    if (mark == std::string::npos)
        return SQLITE_OK;
    const auto digits = finding.find_first_of("0123456789", mark + kMark.size());
    int code = 0;
    if (digits != std::string::npos)
        std::from_chars(finding.data() + digits, finding.data() + finding.size(), code);
    const int kind = code & 0xFF;
    return kind == SQLITE_IOERR || kind == SQLITE_NOMEM || kind == SQLITE_BUSY || kind == SQLITE_CANTOPEN
               ? code
               : SQLITE_OK;
}

int tablesToCheck(const SqliteConnection& connection, std::vector<std::string>& tables) {
    std::int64_t pages = 0;
    std::int64_t size = 0;
    int code = connection.queryInteger("PRAGMA page_count", pages);
    if (code == SQLITE_OK)
        code = connection.queryInteger("PRAGMA page_size", size);
    if (code != SQLITE_OK || pages * size <= kSmallFile)
        return code;
    tables.emplace_back("sqlite_master");
    return connection.queryTexts("SELECT name FROM sqlite_master WHERE type = 'table' AND rootpage > 0",
                                 tables);
}

} // namespace

Result<> refuseOddNeighbours(const std::string& path, const std::string& name) {
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        const std::filesystem::path neighbour = resolvedPath(path) + suffix;
        std::error_code error;
        const auto status = std::filesystem::symlink_status(neighbour, error);
        if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
            return faultResult(eStoreFault::kOddNeighbour, name, neighbour.filename());
    }
    return {};
}

Result<> refuseLeftChanges(const SqliteDatabase& database, const std::string& path) {
    if (!database.connection.get()) // nothing can be read, and the reason is known
        return {};
    const std::string resolved = resolvedPath(path);
    const std::string log = resolved + "-wal";
    std::error_code error;
    if (const auto size = std::filesystem::file_size(log, error); !error && size > 0)
        return faultResult(eStoreFault::kLeftLog, database.file, std::filesystem::path(log).filename());
    const std::string journal = resolved + "-journal";
    const std::string name = std::filesystem::path(journal).filename();
    constexpr int kLooks = 3; // a program that is at work changes both files between two looks
    eLeftJournal found = eLeftJournal::kNone;
    for (int look = 0; look < kLooks; ++look) {
        if (look > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        found = judgeLeftJournal(journal, database.connection.get());
        if (found == eLeftJournal::kNone || found == eLeftJournal::kOfThisFile)
            return {};
    }
    return faultResult(found == eLeftJournal::kUnreadable ? eStoreFault::kInputOutput
                                                          : eStoreFault::kForeignJournal,
                       database.file, name);
}

Result<> refuseExpressions(const SqliteDatabase& database) {
    std::vector<std::string> computed;
    int code = database.connection.queryTexts(
        "SELECT t.name || '.' || c.name FROM sqlite_master t, pragma_table_xinfo(t.name) c "
        "WHERE t.type = 'table' AND t.rootpage > 0 AND c.hidden > 1 UNION ALL "
        "SELECT i.name FROM sqlite_master i, pragma_index_xinfo(i.name) c "
        "WHERE i.type = 'index' AND i.sql IS NOT NULL AND c.cid = -2 UNION ALL "
        "SELECT i.name FROM sqlite_master i, pragma_index_list(i.tbl_name) l "
        "WHERE i.type = 'index' AND i.sql IS NOT NULL AND l.name = i.name AND l.partial LIMIT 1",
        computed);
    std::vector<std::string> defaults;
    if (code == SQLITE_OK)
        code = database.connection.queryTexts(
            "SELECT DISTINCT c.dflt_value FROM sqlite_master t, pragma_table_info(t.name) c "
            "WHERE t.type = 'table' AND t.rootpage > 0 AND c.dflt_value IS NOT NULL",
            defaults);
    if (code != SQLITE_OK)
        return database.failure(code);
    if (const auto it = std::ranges::find_if_not(defaults, &isLiteral); it != defaults.end())
        computed.push_back("DEFAULT " + it->substr(0, 40));
    return computed.empty() ? Result<>()
                            : faultResult(eStoreFault::kComputed, database.file, computed.front());
}

Result<> findDamage(const SqliteDatabase& database, bool indexes, int most,
                    std::vector<std::string>& findings) {
    std::vector<std::string> tables;
    int code = tablesToCheck(database.connection, tables);
    const std::string pragma = indexes ? "PRAGMA integrity_check(" : "PRAGMA quick_check(";
    if (tables.empty())
        tables.push_back(std::to_string(most));
    else
        std::ranges::transform(tables, tables.begin(), &quotedText);
    for (auto it = tables.begin(); code == SQLITE_OK && it != tables.end(); ++it) {
        std::vector<std::string> found;
        code = database.connection.queryTexts(pragma + *it + ")", found);
        std::erase(found, "ok");
        findings.insert(findings.end(), found.begin(), found.end());
    }
    for (const std::string& finding : findings)
        if (code == SQLITE_OK)
            code = readErrorIn(finding);
    if (findings.size() > static_cast<std::size_t>(most))
        findings.resize(static_cast<std::size_t>(most));
    return code == SQLITE_OK ? Result<>() : database.failure(code);
}
