#include "data/store/FileVersion.h"

#include "base/Translation.h"
#include "data/store/SchemaMigration.h"

Result<> FileVersion::look() {
    std::int64_t application = 0;
    int code = m_database.connection.queryInteger("PRAGMA application_id", application);
    if (code == SQLITE_OK)
        code = m_database.connection.queryInteger("PRAGMA user_version", m_version);
    if (code != SQLITE_OK)
        return m_database.failure(code);
    if (application != SchemaHistory::kApplicationId)
        return faultResult(eStoreFault::kOtherApplication, m_database.file);
    if (m_version < m_history.oldest())
        return faultResult(eStoreFault::kUnknownVersion, m_database.file, std::to_string(m_version));
    return {};
}

std::string FileVersion::whyTooNew() const {
    if (!isNewer())
        return {};
    return faultSentence(
        eStoreFault::kNewerVersion, m_database.file,
        KorString::format(translated("version %s"), {std::to_string(m_version)}).toStdString());
}

// Another program may bring the file to another version, or change one of an earlier version, at any time.
Result<> FileVersion::follow(std::int64_t state) {
    if (m_state == state)
        return m_whyNoCopy;
    forget();
    Result<> result = look();
    if (result && isOlder())
        result = copyForward();
    if (result || !m_whyNoCopy)
        m_state = state;
    return result;
}

Result<> FileVersion::copyForward() {
    auto copy = std::make_unique<SqliteDatabase>(&m_database);
    if (Result<> copied = copyToMemory(m_database, *copy); !copied)
        return copied;
    m_whyNoCopy = migrate(*copy, m_history, static_cast<int>(m_version));
    if (m_whyNoCopy)
        m_copy = std::move(copy);
    return m_whyNoCopy;
}

Result<> FileVersion::bringForward(const std::string& path) {
    Result<> result = look();
    if (result && isNewer())
        return {whyTooNew()};
    if (!result || !isOlder())
        return result;
    m_backup = std::make_unique<VersionBackup>(path, m_database.file, static_cast<int>(m_version));
    result = m_backup->make(m_database.connection.get());
    if (result)
        result = migrate(m_database, m_history, static_cast<int>(m_version));
    m_database.forgetLayouts();
    return result;
}

void FileVersion::finish(bool kept) {
    if (m_backup && kept) {
        m_version = m_history.current();
        m_copy.reset();
    }
    m_backup.reset();
}

void FileVersion::forget() {
    m_copy.reset();
    m_whyNoCopy = {};
    m_state.reset();
}
