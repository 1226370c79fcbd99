#include "data/store/SqliteStore.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
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
    sqlite3_file* file = nullptr;
    std::array<unsigned char, 100> header{};
    if (!db || sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        !file->pMethods)
        return SQLITE_OK;
    constexpr std::size_t kReadVersion = 19;
    const int code = file->pMethods->xRead(file, header.data(), header.size(), 0);
    on = code == SQLITE_OK && header[kReadVersion] == 2;
    return code == SQLITE_IOERR_SHORT_READ ? SQLITE_OK : code;
}

} // namespace

SqliteStore::SqliteStore(std::string path, std::string displayName)
    : m_path(std::move(path)), m_wait(displayName), m_database(std::move(displayName)), m_writer(m_database) {
}

SqliteStore::~SqliteStore() {
    close();
}

void SqliteStore::close() {
    endRead();
    rollback();
    m_database.connection = {};
    if (m_identity)
        OpenFiles::remove(*m_identity);
    m_identity.reset();
}

OpenedStore SqliteStore::open(const std::string& path, eMode mode, eCheck check) {
    if (const auto fault = faultOfReading(path))
        return {nullptr, faultSentence(*fault, path)};
    const auto hindrance = mode == eMode::kWrite ? faultOfWriting(path) : std::nullopt;
    auto store = std::unique_ptr<SqliteStore>(new SqliteStore(absolutePath(path), path));
    store->m_readOnly = mode == eMode::kRead || hindrance;
    if (const StoreResult result = store->openChecked(check); !result)
        return {nullptr, result.error};
    return {std::move(store), hindrance ? faultSentence(*hindrance, path) : std::string()};
}

StoreResult SqliteStore::openChecked(eCheck check) {
    StoreResult result = openFile();
    if (result)
        result = checkVersion();
    if (result)
        result = refuseExpressions(m_database);
    if (result)
        result = checkDamage(check);
    if (result)
        acknowledge();
    return result;
}

StoreResult SqliteStore::openFile() {
    m_database.whyClosed = {};
    if (StoreResult odd = refuseOddNeighbours(m_path, name()); !odd)
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

// The file may come from anybody: nothing that is stored in it may act, and its structure is not trusted.
StoreResult SqliteStore::configure() {
    sqlite3* db = m_database.connection.get();
    const auto again = [](void* wait, int attempt) {
        return int(static_cast<LockWait*>(wait)->again(attempt));
    };
    sqlite3_busy_handler(db, again, &m_wait);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                             SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL})
        sqlite3_db_config(db, option, 0, nullptr);
    if (StoreResult left = refuseLeftChanges(m_database, m_path); !left)
        return left;
    // No page is written before the commit: the mark of the change comes first.
    for (const char* pragma :
         {"PRAGMA cell_size_check = ON", "PRAGMA mmap_size = 0", "PRAGMA temp_store = MEMORY",
          "PRAGMA ignore_check_constraints = ON", "PRAGMA cache_spill = OFF"})
        if (const int code = m_database.connection.execute(pragma); code != SQLITE_OK)
            return m_database.failure(code);
    bool ahead = false;
    int code = m_readOnly ? readWriteAheadMode(db, ahead) : SQLITE_OK;
    if (ahead)
        return faultResult(eStoreFault::kWriteAheadLog, name());
    if (code == SQLITE_OK)
        code = m_database.connection.execute("PRAGMA synchronous = EXTRA");
    return code == SQLITE_OK ? StoreResult{} : m_database.failure(code);
}

StoreResult SqliteStore::leaveWriteAheadMode() {
    std::vector<std::string> mode;
    const int code = m_database.connection.queryTexts("PRAGMA journal_mode = DELETE", mode);
    if (code != SQLITE_OK)
        return m_database.failure(code);
    if (mode != std::vector<std::string>{"delete"})
        return faultResult(eStoreFault::kLocked, name());
    return {};
}

StoreResult SqliteStore::checkVersion() {
    std::int64_t application = 0;
    std::int64_t version = 0;
    int code = m_database.connection.queryInteger("PRAGMA application_id", application);
    if (code == SQLITE_OK)
        code = m_database.connection.queryInteger("PRAGMA user_version", version);
    if (code != SQLITE_OK)
        return m_database.failure(code);
    if (application != kApplicationId)
        return faultResult(eStoreFault::kOtherApplication, name());
    if (version > kSchemaVersion)
        return faultResult(
            eStoreFault::kNewerVersion, name(),
            KorString::format(translated("version %s"), {std::to_string(version)}).toStdString());
    if (version < kSchemaVersion)
        return faultResult(eStoreFault::kUnknownVersion, name(), std::to_string(version));
    return {};
}

StoreResult SqliteStore::checkDamage(eCheck check) {
    if (check == eCheck::kNone)
        return {};
    std::vector<std::string> findings;
    const StoreResult result = findDamage(m_database, check == eCheck::kFull, 1, findings);
    return !result || findings.empty() ? result
                                       : faultResult(eStoreFault::kDamaged, name(), findings.front());
}

StoreResult SqliteStore::readTable(const TableSchema& table, RowArray& rows,
                                   std::vector<ReadProblem>& problems) {
    return readSqliteTable(m_database, table, rows, problems);
}

StoreResult SqliteStore::beginRead(std::int64_t& state) {
    m_isReading = !m_database.connection.isInTransaction();
    if (StoreResult left = m_isReading ? refuseLeftChanges(m_database, m_path) : StoreResult(); !left) {
        m_isReading = false;
        return left;
    }
    int code = m_isReading ? m_database.connection.execute("BEGIN") : SQLITE_OK;
    if (code == SQLITE_OK)
        code = m_database.connection.queryInteger("PRAGMA data_version", state);
    if (code == SQLITE_OK)
        return {};
    const StoreResult result = m_database.failure(code);
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
    if (const StoreResult result = findDamage(m_database, true, kFindings, findings); !result)
        return {result.error};
    std::ranges::transform(findings, findings.begin(), [this](const std::string& finding) {
        return faultSentence(eStoreFault::kDamaged, name(), finding);
    });
    return findings;
}

bool SqliteStore::isReplaced() const {
    return fileIdentity(m_path) != m_identity;
}

StoreResult SqliteStore::begin() {
    if (m_readOnly)
        return faultResult(eStoreFault::kReadOnly, name());
    if (StoreResult left = refuseLeftChanges(m_database, m_path); !left)
        return left;
    bool ahead = false;
    int code = readWriteAheadMode(m_database.connection.get(), ahead);
    if (ahead)
        if (StoreResult left = leaveWriteAheadMode(); !left)
            return left;
    if (code == SQLITE_OK)
        code = m_database.connection.execute("BEGIN IMMEDIATE");
    if (code != SQLITE_OK)
        return m_database.failure(code);
    if (!isReplaced())
        return {};
    rollback();
    return faultResult(eStoreFault::kReplaced, name());
}

StoreResult SqliteStore::apply(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    if (!KorAssert::check(m_database.connection.isInTransaction(), "isInTransaction()"))
        return faultResult(eStoreFault::kOther, name(), translated("no transaction").toStdString());
    const std::size_t before = conflicts.size();
    const StoreResult result = m_writer.apply(change, conflicts);
    m_hasConflict |= conflicts.size() > before;
    return result;
}

StoreResult SqliteStore::commit() {
    if (!KorAssert::check(!m_hasConflict, "!m_hasConflict")) {
        rollback();
        return faultResult(eStoreFault::kOther, name(),
                           translated("a part of the change was not applied").toStdString());
    }
    int code = markChange(m_database.connection.get());
    if (code == SQLITE_OK)
        code = m_database.connection.execute("COMMIT");
    if (code == SQLITE_OK) {
        m_writer.finish(true);
        return isReplaced() ? faultResult(eStoreFault::kReplacedMeanwhile, name()) : StoreResult();
    }
    const StoreResult result = m_database.failure(code);
    rollback();
    return result;
}

void SqliteStore::rollback() {
    m_writer.finish(false);
    m_hasConflict = false;
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

StoreResult SqliteStore::reopen() {
    close();
    const auto fault = faultOfReading(m_path);
    const StoreResult result = fault ? faultResult(*fault, name()) : openChecked(eCheck::kQuick);
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
    return opened.store ? opened.store->integrityFindings() : std::vector{opened.message};
}
