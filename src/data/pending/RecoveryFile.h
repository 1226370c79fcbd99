#pragma once

#include "data/StyleDatabases.h"
#include "data/pending/RecoveryText.h"

#include <filesystem>

/// A file of a `RecoveryWriter` whose program has ended without storing or dropping what was pending. While
/// the object lives no other program can have the file.
class RecoveryFile {
public:
    /// Those in the folder that no running program owns, the oldest first. Empty ones are removed, and what
    /// came over into another one is taken from them.
    static std::vector<RecoveryFile> abandonedIn(const std::filesystem::path& folder);

    RecoveryFile(RecoveryFile&& other) noexcept;
    RecoveryFile& operator=(RecoveryFile&&) = delete;
    ~RecoveryFile();

    /// Takes from the file what stood at the end, for the databases that are open and may be edited; what a
    /// commit stored whose end the program did not live to see is left out. Fails where the file is not as it
    /// was written; it is kept then.
    Result<> read(StyleDatabases& databases);
    const std::filesystem::path& file() const { return m_file; }
    /// What was read; empty when nothing was pending, or nothing of these databases.
    PendingLog& changes() { return *m_changes; }
    /// The databases that have changes in the file, and are not open or not to be edited now.
    const std::vector<std::string>& missing() const { return m_missing; }
    /// Those of them that are open, but must not be edited now.
    const std::vector<std::string>& readOnly() const { return m_readOnly; }
    /// The databases of which another file has the name now.
    const std::vector<std::string>& replaced() const { return m_replaced; }
    /// Whether it breaks off in the middle of a change, which is lost.
    bool isCutOff() const { return m_isCutOff; }
    /// When the last change was made, in seconds since 1970.
    std::int64_t time() const { return m_time; }
    /// What a file says into which what was read comes over.
    std::vector<RecoveryText::TakenOver> takenOver() const;

    /// What was read is pending again, or not wanted: deletes the file, or takes only these changes from it
    /// where it has some of missing databases too.
    void settle();

private:
    RecoveryFile(std::filesystem::path file, int descriptor);
    static std::vector<RecoveryFile> withoutTakenOver(std::vector<RecoveryFile> files);
    bool readText(std::string& text) const;
    RecoveryText::Parsed parsed(const RecoveryText::SourceNames& idOf) const;
    bool leave(const std::vector<std::string>& databases);
    void sort(SourceId id, const RecoverySource& source);
    void leaveStored(StyleDatabases& databases, const RecoveryText::Storing& storing);
    bool append(const std::string& lines);

    std::filesystem::path m_file;
    int m_descriptor;
    std::int64_t m_time = 0;
    std::unique_ptr<PendingLog> m_changes = std::make_unique<PendingLog>();
    std::vector<std::string> m_databases; ///< that have changes in what was read
    std::string m_settled;                ///< the lines that take the changes from the file
    off_t m_end = 0;                      ///< where they are to stand
    bool m_isCutOff = false;              ///< what was read
    RecoveryText::Seal m_seal = RecoveryText::kNoSeal;
    std::vector<std::string> m_missing;
    std::vector<std::string> m_readOnly;
    std::vector<std::string> m_replaced;
};
