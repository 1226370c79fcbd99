#pragma once

#include "data/pending/RecoveryText.h"

#include <filesystem>

class StyleDatabases;

/// Writes down what stands in the log of the databases, as it changes, so that nothing pending is lost when
/// the program crashes or is killed: into a file "recovery-" with the number of this process in a folder of
/// the program's own. The file is there only while something is pending; it is locked as long as its writer
/// lives.
class RecoveryWriter : public PendingObserver {
public:
    using Tell = std::function<void(const KorString&)>;

    /// `databases` own the log, which is to own the writer. Where the file cannot be written, `tell` hears
    /// one sentence, and later changes are not written down until those that could not be written are taken
    /// back, or, where the file would not be true any more and is removed, until nothing stands.
    RecoveryWriter(std::filesystem::path folder, StyleDatabases& databases, Tell tell);
    /// What still stands stays in the file.
    ~RecoveryWriter() override;
    RecoveryWriter(const RecoveryWriter&) = delete;
    RecoveryWriter& operator=(const RecoveryWriter&) = delete;

    void changed(std::span<const PendingPlace> forgotten, const PendingCommand& made) override;
    void takenBack() override;
    void emptied() override;

private:
    int numberOf(SourceId id, std::string& names);
    void open();
    bool append(const std::string& lines);
    void abandon();
    void close();

    std::filesystem::path m_folder;
    StyleDatabases& m_databases;
    Tell m_tell;
    std::filesystem::path m_file; ///< empty while there is none
    int m_descriptor = -1;
    std::uint64_t m_size = 0;
    RecoveryText::Seal m_seal = RecoveryText::kNoSeal;
    int m_unwritten = 0;        ///< commands that stand and could not be written
    bool m_isAbandoned = false; ///< what the file held was not true any more
    std::map<std::pair<SourceId, std::string>, int> m_numbers; ///< of the databases that the file names
};
