#pragma once

#include "data/store/SchemaHistory.h"
#include "data/store/SqliteDatabase.h"
#include "data/store/VersionBackup.h"

/// Which version of the schema the file of a store has, and how it is read and written in the current one: a
/// file of an earlier version is read from a copy in memory that was brought there; the first transaction
/// that is committed brings the file itself there. One of a newer version is read as it is, and not written.
class FileVersion {
public:
    /// `database` is the open file, and outlives this, as does `history`.
    FileVersion(SqliteDatabase& database, const SchemaHistory& history)
        : m_database(database), m_history(history), m_version(history.current()) {}

    /// Looks at what the file is; refuses those of other applications and of unknown versions.
    Result<> look();
    bool isOlder() const { return m_version < m_history.current(); }
    bool isNewer() const { return m_version > m_history.current(); }
    /// As `StyleStore::whyTooNew` says.
    std::string whyTooNew() const;

    /// In an open read transaction: takes care that `toRead` is what the file holds in it. `state` differs
    /// from an earlier one when another program changed the file between.
    Result<> follow(std::int64_t state);
    /// What tables are read from while a transaction is open.
    SqliteDatabase& toRead() { return isOlder() && !m_backup ? *m_copy : m_database; }

    /// In an open write transaction that has written nothing yet: refuses a newer file; brings an older one,
    /// of which `path` is the absolute path, to the current version.
    Result<> bringForward(const std::string& path);
    /// Before that transaction is committed: puts the backup in its place.
    Result<> keepBackup() { return m_backup ? m_backup->publish() : Result<>(); }
    /// After it. Harmless where there is none.
    void finish(bool kept);

    /// For when another file may be opened.
    void forget();

private:
    Result<> copyForward();

    SqliteDatabase& m_database;
    const SchemaHistory& m_history;
    std::int64_t m_version;                  ///< that the file has
    std::optional<std::int64_t> m_state;     ///< in which the file was looked at for reading
    std::unique_ptr<SqliteDatabase> m_copy;  ///< of an older file, in the current version
    Result<> m_whyNoCopy;                    ///< why there can be none
    std::unique_ptr<VersionBackup> m_backup; ///< while the open transaction brings the file forward
};
