#pragma once

#include "data/store/FileIdentity.h"
#include "data/store/FileVersion.h"
#include "data/store/LockWait.h"
#include "data/store/SqliteWriter.h"

#include <functional>

class SqliteStore;

/// What came of opening a file. A failure with a store says why the file may only be read although writing
/// was asked for; of a newer version the store itself tells by `whyTooNew`.
struct OpenedStore : Result<> {
    std::unique_ptr<SqliteStore> store = {}; ///< null when the file cannot be used
};

/// A style database in an SQLite file. While it is open the process must not touch the file by other means
/// than its entry in the folder: closing any other handle of it would drop the locks held here.
class SqliteStore final : public StyleStore {
public:
    enum class eMode { kRead, kWrite };
    /// How thoroughly the file is checked for damage before it is used.
    enum class eCheck {
        kNone,
        kQuick, ///< its structure, in a third of the time of reading it
        kFull,  ///< its indexes too: before anything is merged from it
    };

    /// Opens an existing file. In `kRead` neither the file nor its folder is touched. Where `kWrite` is asked
    /// for and the file or its folder may not be written, it is opened for reading, with a message. A file in
    /// write-ahead mode can be opened in `kWrite` only, and leaves that mode when it is first written.
    static OpenedStore open(const std::string& path, eMode mode, eCheck check = eCheck::kQuick,
                            const SchemaHistory& history = SchemaHistory::own());

    /// Makes a new database with all tables, empty. An existing file of that name is an error.
    static Result<> create(const std::string& path);
    /// Makes a new database with all tables, in which `fill` applies rows, and puts it in the place of
    /// whatever `path` named before, or only where it named nothing. It appears there whole and checked, or
    /// not at all.
    static Result<> createWith(const std::string& path, const std::function<Result<>(StyleStore&)>& fill,
                               bool mayReplace = true, const SchemaHistory& history = SchemaHistory::own());

    ~SqliteStore() override;

    const std::string& name() const override { return m_database.file; }
    bool isReadOnly() const override { return m_readOnly || m_version.isNewer(); }
    std::string whyTooNew() const override { return m_version.whyTooNew(); }
    std::string whyReadOnly() const override;
    Result<> readTable(const TableSchema& table, RowArray& rows, std::vector<ReadProblem>& problems) override;
    Result<> beginRead(std::int64_t& state) override;
    void endRead() override;
    std::vector<std::string> integrityFindings() override;
    Result<> begin() override;
    Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts) override;
    std::uint32_t markOfChange() override;
    bool holdsMark(std::uint32_t mark) override;
    Result<> commit() override;
    void rollback() override;
    bool changedOutside() override;
    Result<> reopen() override;
    void acknowledge() override;

private:
    friend class SqliteCreation;

    SqliteStore(std::string path, std::string displayName, const SchemaHistory& history);

    Result<> openChecked(eCheck check);
    Result<> openFile();
    void close();
    Result<> configure();
    Result<> leaveWriteAheadMode();
    Result<> checkDamage(eCheck check);
    bool isReplaced() const;
    std::uint32_t lastMark() const;

    std::string m_path; ///< absolute
    std::optional<FileIdentity> m_identity;
    LockWait m_wait;
    SqliteDatabase m_database;
    SqliteWriter m_writer;
    FileVersion m_version;
    std::int64_t m_dataVersion = 0;
    bool m_readOnly = true;
    bool m_hasConflict = false; ///< in the open transaction
    bool m_isReading = false;   ///< the open transaction is one of `beginRead`
};

/// What is damaged in the database file `path`, or why it cannot be opened, one sentence each; empty when it
/// is sound.
std::vector<std::string> integrityFindings(const std::string& path);
