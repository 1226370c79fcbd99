#pragma once

#include "data/pending/RecoveryText.h"

#include <filesystem>
#include <optional>
#include <set>

class StyleDatabases;

/// Writes down what stands in the log of the databases, as it changes, so that nothing pending is lost when
/// the program crashes or is killed: into a file of a `RecoveryName` in a folder of the program's own. The
/// file is there only while something is pending; it is locked as long as its writer lives. What cannot be
/// written is made up for as soon as the file can be written again; until then the file stays as it was,
/// unless it would bring back what was taken back.
class RecoveryWriter : public PendingObserver {
public:
    using Tell = std::function<void(const KorString&)>;

    /// `databases` own the log, which is to own the writer. Where the file cannot be written, `tell` hears
    /// one sentence, and again only after it could be written meanwhile.
    RecoveryWriter(std::filesystem::path folder, StyleDatabases& databases, Tell tell);
    /// What still stands stays in the file.
    ~RecoveryWriter() override;
    RecoveryWriter(const RecoveryWriter&) = delete;
    RecoveryWriter& operator=(const RecoveryWriter&) = delete;

    void changed(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made) override;
    void takenBack() override;
    void emptied() override;
    void storing(std::span<const PendingPlace> places, std::uint32_t mark) override;
    void notStored() override;
    void takeOver(std::shared_ptr<RecoveryFile> file) override;
    /// Whether a crash would lose nothing of what stands.
    bool isUpToDate() const { return m_unwritten == 0 && !m_isOld; }

private:
    // Where the lines up to some command end.
    struct Mark {
        std::uint64_t size = 0;
        RecoveryText::Seal seal = RecoveryText::kNoSeal;
        std::size_t sources = 0; // that are named up to there
    };
    struct File {
        std::filesystem::path path; // empty while there is none
        int descriptor = -1;
        Mark end;
        std::vector<Mark>
            commands; // that stand and were written since something was forgotten, the last last
        std::map<std::pair<SourceId, std::string>, int> numbers; // of the databases that the file names
    };

    int numberOf(SourceId id, std::string& names);
    static std::string nameLine(int number, const PendingStep& step, RowRef row, const KorString& name);
    std::string nameOfChanged(const PendingStep& step, int number, std::set<RowRef>& told) const;
    std::string namesAbove(const PendingStep& step, int number, std::set<RowRef>& told) const;
    std::string linesOf(std::span<const PendingStep> steps, std::string& names, std::set<RowRef>& told);
    std::string linesOf(const PendingCommand& made);
    bool write(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made);
    bool writeTogether(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made,
                       const std::vector<RecoveryText::TakenOver>& takenOver);
    void settleTakenOver();
    bool append(const std::string& lines, const std::vector<Mark>& commands);
    bool open();
    bool shorten(const Mark& end);
    bool rewrite();
    void tellOnce();
    void remove();
    void close();

    std::filesystem::path m_folder;
    StyleDatabases& m_databases;
    Tell m_tell;
    File m_file;
    std::vector<std::shared_ptr<RecoveryFile>> m_takenOver; ///< what they held is not written yet
    std::optional<Mark> m_beforeStoring;
    std::size_t m_unwritten = 0; ///< commands that stand and are missing at the end of the file
    bool m_isOld = false;        ///< what the file holds stood before something was forgotten or taken back
    bool m_isTold = false;
};
