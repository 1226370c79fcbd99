#include "data/store/SqliteStore.h"
#include "data/store/FileFaults.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/store/DatabaseFile.h"
#include "data/store/FileGuards.h"
#include "data/store/LeftJournal.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace {

constexpr int kFindings = 100;

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.string();
}

// Whether the file's header asks readers for a write-ahead log. Read through the database engine's own
// handle, before anything else is, since reading the database would make the log. Returns a result code.
int readWriteAheadMode(sqlite3* db, bool& on) {
    std::array<unsigned char, 100> header{};
    constexpr std::size_t kReadVersion = 19;
    const int code = DatabaseFile(db).read(0, header);
    on = code == SQLITE_OK && header[kReadVersion] == 2;
    return code == SQLITE_IOERR_SHORT_READ ? SQLITE_OK : code;
}

} // namespace

SqliteStore::SqliteStore(std::string path, std::string displayName, const SchemaHistory& history)
    : m_path(std::move(path)), m_wait(displayName), m_database(std::move(displayName)), m_writer(m_database),
      m_version(m_database, history) {}

SqliteStore::~SqliteStore() {
    close();
}

void SqliteStore::close() {
    endRead();
    rollback();
    m_version.forget();
    m_database.connection = {};
    if (m_identity)
        OpenFiles::remove(*m_identity);
    m_identity.reset();
}

OpenedStore SqliteStore::open(const std::string& path, eMode mode, eCheck check,
                              const SchemaHistory& history) {
    if (const auto fault = faultOfReading(path))
        return {faultResult(*fault, path)};
    const auto hindrance = mode == eMode::kWrite ? faultOfWriting(path) : std::nullopt;
    auto store = std::unique_ptr<SqliteStore>(new SqliteStore(absolutePath(path), path, history));
    store->m_readOnly = mode == eMode::kRead || hindrance;
    if (Result<> result = store->openChecked(check); !result)
        return {std::move(result)};
    return {hindrance ? faultResult(*hindrance, path) : Result<>(), std::move(store)};
}

Result<> SqliteStore::openChecked(eCheck check) {
    Result<> result = openFile();
    if (result)
        result = m_version.look();
    if (result)
        result = refuseExpressions(m_database);
    if (result)
        result = checkDamage(check);
    if (result)
        acknowledge();
    return result;
}

Result<> SqliteStore::openFile() {
    m_database.whyClosed = {};
    if (Result<> odd = refuseOddNeighbours(m_path, name()); !odd)
        return odd;
    if (const int code = m_database.connection.open(m_path, m_readOnly); code != SQLITE_OK)
        return (code & 0xFF) == SQLITE_CANTOPEN
                   ? faultResult(faultOfOpening(sqlite3_system_errno(m_database.connection.get())), name())
                   : m_database.failure(code);
    m_identity = fileIdentity(m_path);
    if (m_identity)
        OpenFiles::add(*m_identity);
    return configure();
}

Result<> SqliteStore::configure() {
    sqlite3* db = m_database.connection.get();
    const auto again = [](void* wait, int attempt) {
        return int(static_cast<LockWait*>(wait)->again(attempt));
    };
    sqlite3_busy_handler(db, again, &m_wait);
    if (Result<> left = refuseLeftChanges(m_database, m_path); !left)
        return left;
    int code = m_database.connection.distrust();
    // No page is written before the commit: the mark of the change comes first.
    if (code == SQLITE_OK)
        code = m_database.connection.execute("PRAGMA cache_spill = OFF");
    bool ahead = false;
    if (code == SQLITE_OK && m_readOnly)
        code = readWriteAheadMode(db, ahead);
    if (ahead)
        return faultResult(eStoreFault::kWriteAheadLog, name());
    if (code == SQLITE_OK)
        code = m_database.connection.execute("PRAGMA synchronous = EXTRA");
    return code == SQLITE_OK ? Result<>{} : m_database.failure(code);
}

Result<> SqliteStore::leaveWriteAheadMode() {
    std::vector<std::string> mode;
    const int code = m_database.connection.queryTexts("PRAGMA journal_mode = DELETE", mode);
    if (code != SQLITE_OK)
        return m_database.failure(code);
    if (mode != std::vector<std::string>{"delete"})
        return faultResult(eStoreFault::kLocked, name());
    return {};
}

Result<> SqliteStore::checkDamage(eCheck check) {
    if (check == eCheck::kNone)
        return {};
    std::vector<std::string> findings;
    const Result<> result = findDamage(m_database, check == eCheck::kFull, 1, findings);
    return !result || findings.empty() ? result
                                       : faultResult(eStoreFault::kDamaged, name(), findings.front());
}

Result<> SqliteStore::readTable(const TableSchema& table, RowArray& rows,
                                std::vector<ReadProblem>& problems) {
    if (!m_version.isOlder() || m_database.connection.isInTransaction())
        return readSqliteTable(m_version.toRead(), table, rows, problems);
    std::int64_t state = 0;
    Result<> result = beginRead(state);
    if (result)
        result = readSqliteTable(m_version.toRead(), table, rows, problems);
    endRead();
    return result;
}

Result<> SqliteStore::beginRead(std::int64_t& state) {
    m_isReading = !m_database.connection.isInTransaction();
    if (Result<> left = m_isReading ? refuseLeftChanges(m_database, m_path) : Result<>(); !left) {
        m_isReading = false;
        return left;
    }
    int code = m_isReading ? m_database.connection.execute("BEGIN") : SQLITE_OK;
    if (code == SQLITE_OK)
        code = m_database.connection.queryInteger("PRAGMA data_version", state);
    Result<> result = code == SQLITE_OK ? Result<>() : m_database.failure(code);
    if (result && m_isReading)
        result = m_version.follow(state);
    if (!result)
        endRead();
    return result;
}

void SqliteStore::endRead() {
    if (m_isReading && m_database.connection.isInTransaction())
        m_database.connection.execute("COMMIT");
    m_isReading = false;
}

std::vector<std::string> SqliteStore::integrityFindings() {
    std::vector<std::string> findings;
    if (const Result<> result = findDamage(m_database, true, kFindings, findings); !result)
        return {result.error};
    std::ranges::transform(findings, findings.begin(), [this](const std::string& finding) {
        return faultSentence(eStoreFault::kDamaged, name(), finding);
    });
    return findings;
}

std::string SqliteStore::whyReadOnly() const {
    if (m_version.isNewer())
        return whyTooNew();
    return m_readOnly ? translated("The file of the database can only be read, so nothing was changed; make "
                                   "it writable and open it again.")
                            .toStdString()
                      : std::string();
}

bool SqliteStore::isReplaced() const {
    return fileIdentity(m_path) != m_identity;
}

Result<> SqliteStore::begin() {
    if (m_readOnly)
        return faultResult(eStoreFault::kReadOnly, name());
    if (Result<> left = refuseLeftChanges(m_database, m_path); !left)
        return left;
    if (m_version.isNewer()) // not even its mode is changed
        return {whyTooNew()};
    bool ahead = false;
    int code = readWriteAheadMode(m_database.connection.get(), ahead);
    if (ahead)
        if (Result<> left = leaveWriteAheadMode(); !left)
            return left;
    if (code == SQLITE_OK)
        code = m_database.connection.execute("BEGIN IMMEDIATE");
    if (code != SQLITE_OK)
        return m_database.failure(code);
    Result<> result =
        isReplaced() ? faultResult(eStoreFault::kReplaced, name()) : m_version.bringForward(m_path);
    if (!result)
        rollback();
    return result;
}

Result<> SqliteStore::apply(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    if (!KorAssert::check(m_database.connection.isInTransaction(), "changes are applied in a transaction"))
        return faultResult(eStoreFault::kOther, name(), translated("no transaction").toStdString());
    const std::size_t before = conflicts.size();
    Result<> result = m_writer.apply(change, conflicts);
    m_hasConflict |= conflicts.size() > before;
    return result;
}

std::uint32_t SqliteStore::markOfChange() {
    return markChange(m_database.connection.get()) == SQLITE_OK ? lastMark() : 0;
}

bool SqliteStore::holdsMark(std::uint32_t mark) {
    return mark != 0 && lastMark() == mark;
}

std::uint32_t SqliteStore::lastMark() const {
    std::int64_t mark = 0;
    const int code = m_database.connection.queryInteger("PRAGMA schema_version", mark);
    return code == SQLITE_OK ? static_cast<std::uint32_t>(mark) : 0;
}

Result<> SqliteStore::commit() {
    if (!KorAssert::check(!m_hasConflict, "what conflicts is not committed")) {
        rollback();
        return faultResult(eStoreFault::kOther, name(),
                           translated("a part of the change was not applied").toStdString());
    }
    int code = markChange(m_database.connection.get());
    Result<> result = code == SQLITE_OK ? m_version.keepBackup() : m_database.failure(code);
    if (result)
        code = m_database.connection.execute("COMMIT");
    if (code != SQLITE_OK)
        result = m_database.failure(code);
    if (!result) {
        rollback();
        return result;
    }
    m_writer.finish(true);
    m_version.finish(true);
    return isReplaced() ? faultResult(eStoreFault::kReplacedMeanwhile, name()) : Result<>();
}

void SqliteStore::rollback() {
    m_writer.finish(false);
    m_hasConflict = false;
    m_version.finish(false);
    if (m_database.connection.isInTransaction())
        m_database.connection.execute("ROLLBACK");
}

bool SqliteStore::changedOutside() {
    if (!refuseLeftChanges(m_database, m_path))
        return true;
    std::int64_t version = m_dataVersion;
    const LockWait::Brief brief;
    m_database.connection.queryInteger("PRAGMA data_version", version);
    return version != m_dataVersion || isReplaced();
}

Result<> SqliteStore::reopen() {
    close();
    const auto fault = faultOfReading(m_path);
    Result<> result = fault ? faultResult(*fault, name()) : openChecked(eCheck::kQuick);
    if (!result) {
        close();
        m_database.whyClosed = result;
    }
    return result;
}

void SqliteStore::acknowledge() {
    m_database.connection.queryInteger("PRAGMA data_version", m_dataVersion);
    m_database.forgetLayouts();
}

std::vector<std::string> integrityFindings(const std::string& path) {
    const OpenedStore opened = SqliteStore::open(path, SqliteStore::eMode::kRead, SqliteStore::eCheck::kNone);
    return opened.store ? opened.store->integrityFindings() : std::vector{opened.error};
}
