#include "data/store/SqliteCreation.h"
#include "data/store/FileFaults.h"

#include "data/store/LeftDatabases.h"
#include "data/store/LeftJournal.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

SqliteCreation::SqliteCreation(std::string target, eTarget rule, const SchemaHistory& history)
    : m_target(std::move(target)), m_path(resolvedPath(m_target)), m_rule(rule), m_history(history) {}

Result<> SqliteCreation::fault(eStoreFault kind, const std::string& detail) const {
    return faultResult(kind, m_target, detail);
}

Result<> SqliteCreation::make(const std::function<Result<>(StyleStore&)>& fill) {
    Result<> result = checkTarget();
    if (!result)
        return result;
    removeLeftDatabases(std::filesystem::path(m_path).parent_path());
    if (const int error = m_temporary.create(m_path, 0666))
        return fault(faultOfSystem(error), std::strerror(error));
    SqliteStore store(m_temporary.path(), m_target, m_history);
    store.m_readOnly = false;
    result = store.openFile();
    if (result)
        result = makeTables(store);
    if (result && fill)
        result = fill(store);
    if (result)
        result = store.commit();
    if (result)
        result = store.checkDamage(SqliteStore::eCheck::kFull);
    return result;
}

Result<> SqliteCreation::checkTarget() const {
    if (const auto hindrance = faultOfFolder(m_path))
        return fault(*hindrance);
    if (isNeighbourName(m_path))
        return fault(eStoreFault::kNeighbour);
    const auto present = fileIdentity(m_path);
    if (present && m_rule == eTarget::kMustBeNew)
        return fault(eStoreFault::kExists);
    std::error_code error;
    const auto status = std::filesystem::symlink_status(m_path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        return fault(eStoreFault::kNoFile);
    if (present && OpenFiles::contains(*present))
        return fault(eStoreFault::kOpenHere);
    if (present && isBeingWritten(m_path))
        return fault(eStoreFault::kLocked);
    for (const char* suffix : {"-journal", "-wal"})
        if (fileIdentity(m_path + suffix))
            return fault(eStoreFault::kLeftover, std::filesystem::path(m_path + suffix).filename());
    return {};
}

// Nobody knows the file yet: neither a journal on the disk nor a sync in between would help anybody.
Result<> SqliteCreation::makeTables(SqliteStore& store) const {
    const SqliteConnection& connection = store.m_database.connection;
    std::vector<std::string> statements = {
        "PRAGMA journal_mode = MEMORY",
        "PRAGMA synchronous = OFF",
        "PRAGMA application_id = " + std::to_string(SchemaHistory::kApplicationId),
        "PRAGMA user_version = " + std::to_string(m_history.current()),
        "BEGIN IMMEDIATE",
    };
    std::ranges::move(m_history.creation(), std::back_inserter(statements));
    for (const std::string& statement : statements)
        if (const int code = connection.execute(statement); code != SQLITE_OK)
            return store.m_database.failure(code);
    return {};
}

Result<> SqliteCreation::publish() {
    const int error = m_temporary.publish(m_path, m_rule == eTarget::kMayExist);
    return error ? fault(faultOfSystem(error), std::strerror(error)) : Result<>();
}

Result<> SqliteStore::create(const std::string& path) {
    return createWith(path, {}, false);
}

Result<> SqliteStore::createWith(const std::string& path, const std::function<Result<>(StyleStore&)>& fill,
                                 bool mayReplace, const SchemaHistory& history) {
    SqliteCreation creation(
        path, mayReplace ? SqliteCreation::eTarget::kMayExist : SqliteCreation::eTarget::kMustBeNew, history);
    const Result<> made = creation.make(fill);
    return made ? creation.publish() : made;
}
