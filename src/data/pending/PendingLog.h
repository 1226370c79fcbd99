#pragma once

#include "data/StyleSource.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <map>
#include <memory>
#include <set>
#include <span>
#include <vector>

/// One change that is not stored yet.
struct PendingStep {
    enum class eAction : std::uint8_t { kCell, kAppend, kDelete };

    SourceId source;
    eTableType table = kNoTable;
    eAction action = eAction::kCell;
    std::int32_t key = 0;
    const Column* column = nullptr;       ///< cells only
    CellValue before;                     ///< cells only
    CellValue after;                      ///< cells only
    std::shared_ptr<StructRecord> record; ///< whole row as appended or deleted
    int group = 0;                        ///< steps of one group are taken back together
    bool mends = false; ///< a cell that could not be read: written even where `before` is what is wanted
};

/// One table of one source.
using PendingPlace = std::pair<SourceId, eTableType>;

class RecoveryFile;

/// Steps that are taken back and brought again together.
struct PendingCommand {
    KorString label;
    std::span<const PendingStep> steps; ///< oldest first; valid until the log changes
};

/// Hears what comes to stand in a log, and what does not stand any more.
class PendingObserver {
public:
    virtual ~PendingObserver() = default;

    /// The steps of these tables were stored or dropped, then those of some commands were made. Either may be
    /// missing. Steps that were taken back and brought again are made anew.
    virtual void changed(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made) = 0;
    /// The last command that stood was taken back.
    virtual void takenBack() = 0;
    /// Nothing stands any more.
    virtual void emptied() = 0;
    /// All steps of these tables, of one source, are about to be committed together, which leaves `mark` in
    /// the database (see `StyleStore::markOfChange`). They are forgotten next, or `notStored` is said.
    virtual void storing(std::span<const PendingPlace> places, std::uint32_t mark) = 0;
    /// That commit failed: nothing of it was stored.
    virtual void notStored() = 0;
    /// What the file held is in the log by the next call of the others, or not wanted: it is to be settled
    /// as soon as a crash would not lose it.
    virtual void takeOver(std::shared_ptr<RecoveryFile> file) = 0;
};

/// The changes of all sources since they were last stored, in the order in which they were made. The tables
/// in memory already show them; the log can take them back and bring them again, and says what a commit of
/// one table has to write.
class PendingLog {
public:
    /// Steps recorded until the matching `endGroup` belong together; groups nest into the outermost one.
    void beginGroup(const KorString& label);
    void endGroup();

    /// Records a step that has just been made. What had been taken back before can no longer be brought
    /// again.
    void record(PendingStep step);

    bool hasPending(SourceId source, eTableType table) const { return m_counts.contains({source, table}); }
    bool hasPending(SourceId source) const;
    bool isEmpty() const { return m_position == 0; }
    /// Stored rows that have pending changes, those that were changed last if there are more than `most`.
    std::set<RowRef> rowsOf(SourceId source, std::size_t most) const;
    /// The steps that stand, oldest first. Valid until the log changes.
    std::vector<const PendingStep*> steps() const;

    /// The net change of one table: a value set back to what is stored is no change, a row appended and
    /// deleted again neither. Pointers in it are valid until the next call.
    TableChange netChange(SourceId source, eTableType table);

    /// The steps of a table are stored or taken back for good: forgets them, and with them what could have
    /// been brought again.
    void forget(SourceId source, eTableType table) { forget(source, std::span(&table, 1)); }
    void forget(SourceId source, std::span<const eTableType> tables);
    /// Forgets all steps of a source that is being closed.
    void forget(SourceId source);

    /// Notes what a row was called that steps refer to, for the case that it is not there any more.
    void noteName(SourceId source, RowRef row, const KorString& name) { m_names[{source, row}] = name; }
    const std::map<std::pair<SourceId, RowRef>, KorString>& names() const { return m_names; }

    /// What has been taken back can no longer be brought again.
    void forgetTakenBack() { m_steps.resize(m_position); }
    /// What has been taken back and can be brought again, in the order of that.
    std::vector<PendingStep> takenBack() const;
    /// Lets that be these steps.
    void setTakenBack(const std::vector<PendingStep>& steps);

    /// Lets these commands, each with its label, stand in the place of all that stands. They must come to
    /// the same change. The steps of one have a number of this log, which they keep, or 0 for a new one.
    using Commands = std::vector<std::pair<KorString, std::vector<PendingStep>>>;
    void standAs(const Commands& commands);
    /// Copies of the commands that stand, oldest first.
    Commands commands() const;

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < m_steps.size(); }
    /// What can be taken back, the latest first, or brought again, what is next first; no more than `most`.
    std::vector<PendingCommand> undoable(std::size_t most) const;
    std::vector<PendingCommand> redoable(std::size_t most) const;
    /// The number that the steps of the first that can be taken back have together; 0 for none. No other
    /// command ever has it.
    int undoableGroup() const { return canUndo() ? m_steps[m_position - 1].group : 0; }
    /// The steps of the first of these, in the order in which the caller must apply them to the tables
    /// (backwards for undo). Empty when there is none.
    std::vector<PendingStep> takeUndo();
    std::vector<PendingStep> takeRedo();

    /// The log has one observer at most, which it owns; null for none. One that comes later hears of what
    /// stands already. It hears of a group when the outermost one ends.
    void setObserver(std::unique_ptr<PendingObserver> observer);
    bool isObserved() const { return m_observer != nullptr; }
    /// The observer is told that nothing stands, and leaves.
    void dismissObserver();
    /// Tells the observer that a commit of all steps of these tables begins, and what mark it leaves.
    void announceStoring(SourceId source, std::span<const eTableType> tables, std::uint32_t mark);
    /// Tells it that the commit failed.
    void announceNotStored();
    /// Gives the observer a file whose changes are in this log now. Without one the file is kept.
    void takeOver(std::shared_ptr<RecoveryFile> file);

    /// While one lives the observer hears nothing; then it hears at once what became of the log, so that it
    /// never sees a state in between. Nothing is to be taken back meanwhile.
    class Hold {
    public:
        explicit Hold(PendingLog& log) : m_log(log) { ++log.m_holds; }
        ~Hold() {
            --m_log.m_holds;
            m_log.tell();
        }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        PendingLog& m_log;
    };

    /// While one lives what is done is only tried: the observer hears nothing of it. The caller takes it back
    /// before the trial ends; then what could be brought again before can be brought again.
    class Trial {
    public:
        explicit Trial(PendingLog& log);
        ~Trial();
        Trial(const Trial&) = delete;
        Trial& operator=(const Trial&) = delete;

    private:
        PendingLog& m_log;
        std::vector<PendingStep> m_takenBack;
    };

private:
    /// When no group is open and nobody holds it.
    void tell();
    void addRowChange(const RowArray& rows, std::span<const PendingStep* const> steps, TableChange& change);
    PendingCommand command(std::size_t first, std::size_t last) const;
    void count(const PendingStep& step, int by);

    std::vector<PendingStep> m_steps;
    std::size_t m_position = 0; // steps from here on have been taken back
    std::map<PendingPlace, int> m_counts;
    std::map<int, KorString> m_labels;
    std::map<std::pair<SourceId, RowRef>, KorString> m_names; // of rows that steps refer to
    std::vector<std::shared_ptr<StructRecord>> m_scratch;     // records that the last net change points to
    int m_group = 0;
    int m_depth = 0;
    int m_holds = 0;
    std::unique_ptr<PendingObserver> m_observer;
    bool m_tookOver = false;               // a file that the observer was not called for yet
    std::size_t m_told = 0;                // steps that the observer knows to stand
    std::vector<PendingPlace> m_forgotten; // of those, and not told yet
};
