#pragma once

#include "data/OutsideChanges.h"
#include "data/StyleSource.h"
#include "data/pending/PendingLog.h"
#include "records/WriteResult.h"

#include <functional>
#include <set>

/// What the last commit walk did with one source. After a failure its pending changes are all still there.
struct SourceCommit : Result<> {
    SourceId source = {};
    std::string file = {};
    bool kept = false; ///< all of its change is stored
    std::vector<StoreConflict> conflicts = {};
};

/// All open style databases, the current source, and the changes that are not stored yet. The named
/// operations (`KorOdbcMan`, `KorOdbcGUI`, ...) are one-line doors to the instance that `current` gives.
class StyleDatabases {
public:
    StyleDatabases();
    ~StyleDatabases();
    StyleDatabases(const StyleDatabases&) = delete;
    StyleDatabases& operator=(const StyleDatabases&) = delete;

    /// The instance that the named operations work on: the one made last of those that the current session
    /// has, which is its own where nobody made one.
    static StyleDatabases& current();

    /// Opens a database file as a source, replacing what was open there. A failure leaves the source absent;
    /// a file that can only be read is opened all the same, with a message.
    Result<> openFile(SourceId id, const std::string& path, bool readOnly);
    /// Makes an open store a source, replacing what was open there.
    void addSource(SourceId id, std::unique_ptr<StyleStore> store);
    /// Closes the source, if it is open. Its pending changes are dropped.
    void closeSource(SourceId id);
    /// The source, or null when it is not open.
    StyleSource* source(SourceId id);
    std::vector<SourceId> sources() const;

    /// As `StyleSource::readAll`, for an open source of which no record is held: where another program
    /// changed the database meanwhile and nothing is pending, all is read again.
    Result<> readWhole(SourceId id);

    SourceId currentSource() const { return m_currentId; }
    void setCurrentSource(SourceId id) { m_currentId = id; }
    /// The open source that operations without coordinates act on, or null.
    StyleSource* here() { return source(m_currentId); }

    /// In a maker's installation every source may be edited.
    void setOwnerMode(bool on) { m_ownerMode = on; }
    bool isOwnerMode() const { return m_ownerMode; }
    /// Whether the current source may be edited: it is open, writable, and the user's own or this is a
    /// maker's installation.
    bool isEditable() { return isEditable(m_currentId); }
    bool isEditable(SourceId id);
    /// One sentence when a source that might be edited must not be, because a newer version of the program
    /// made it; otherwise empty.
    std::string whyTooNew(SourceId id);
    /// The same, or why it can only be read otherwise.
    std::string whyNotEditable(SourceId id);

    /// Writes a cell of the current source. What the column must not hold (see `faultOf`) is refused, unless
    /// it is what the cell holds already.
    WriteResult setCell(eTableType type, KorOdbcKey key, int column, const CellValue& value);
    /// Writes all columns of the row that has the record's key, each as `setCell` does, or none.
    WriteResult store(eTableType type, const StructRecord& record);
    /// Appends a copy of `record` with a new key, which is put into `record`. Where the record still carries
    /// the key of a row, the parts of that row are copied along, and cells that hold what that row holds are
    /// taken as they are; other cells are refused as by `setCell`. Where keys are missing for any of these
    /// rows (see `whyNotCopied`) nothing is appended.
    WriteResult append(eTableType type, StructRecord& record);
    /// The same for a record that another database holds: what is stored is taken as it is.
    WriteResult appendStored(eTableType type, StructRecord& record);
    /// Deletes the row and its parts.
    WriteResult remove(eTableType type, KorOdbcKey key);

    PendingLog& pending() { return m_pending; }
    /// Whether there is a group of changes to be taken back or brought again, in none of whose sources it is
    /// to be found out yet what became of a commit.
    bool canUndo() const { return isOutcomeKnown(m_pending.undoable(1)); }
    bool canRedo() const { return isOutcomeKnown(m_pending.redoable(1)); }
    /// The sources of which that is to be found out, by reading them again.
    std::vector<SourceId> unknownOutcomes() const;
    /// Takes back or brings again the last group of changes; returns its steps, empty when there is none that
    /// can be.
    std::vector<PendingStep> undo();
    std::vector<PendingStep> redo();

    /// While one lives, `keepTable` for all table types in ascending order is one transaction per source:
    /// opened by the first table that has something to keep and committed when no later table of that source
    /// has anything pending. A walk that ends earlier stores nothing of what was left open.
    class CommitWalk {
    public:
        explicit CommitWalk(StyleDatabases& databases);
        ~CommitWalk();
        CommitWalk(const CommitWalk&) = delete;
        CommitWalk& operator=(const CommitWalk&) = delete;

    private:
        StyleDatabases& m_databases;
    };

    /// Writes the pending changes of this table (and of the catalogues that follow it) in every source;
    /// outside a walk in a transaction of its own, which is closed when the call returns. Returns whether all
    /// could be kept (see `commitReport`).
    bool keepTable(eTableType type);
    /// Takes the pending changes of this table back, in every source.
    void dropTable(eTableType type);
    /// What the last walk, or table kept alone, did, per source that had something pending.
    const std::vector<SourceCommit>& commitReport() const { return m_report; }

    /// Reads each source again that another program changed or replaced, and puts its pending changes upon
    /// what is stored now. Returns an entry for each such source; nothing is returned when nothing was
    /// changed.
    std::vector<OutsideChange> refreshChanged();
    /// Whether another program changed or replaced a source since it was read.
    bool isChangedOutside() const;
    /// What servers say of the sources that are on one, without waiting for them.
    std::map<SourceId, ServerNews> glance();
    /// As `refreshChanged`, but of sources on servers only those of which `glance` has heard something. Waits
    /// for no server otherwise.
    std::vector<OutsideChange> refreshNoticed();
    /// Whether that would read something.
    bool isNoticed();
    /// The same for one source, changed or not. What was pending is one step of undo afterwards. Changes that
    /// hold no more (a name that is taken, a reference to nothing, a row that is in use) are conflicts.
    OutsideChange refresh(SourceId id);
    /// Makes the pending change of a conflict again, upon what is stored now, with all that belongs to it.
    /// Reads nothing. What has a reason not to hold, or concerns a row that is gone or one that is in use, is
    /// not made.
    WriteResult keepMine(SourceId id, const OutsideConflict& conflict);
    /// Makes the changes that stand in `lost`, of another run of this program, upon what is stored now, as
    /// one change. Returns an entry for each source that has some. Where one of them has an error nothing was
    /// done; it can be tried again.
    std::vector<OutsideChange> bringBack(PendingLog& lost);

    /// How many rows own this one, followed upwards until two are found: 0, 1 or 2. A row with one owner
    /// that has several owners itself is owned by those. 2 in a source that is not complete: it may be.
    int ownerCount(eTableType type, KorOdbcKey key);
    /// Cells of other records that use the row (no parts, no filing).
    std::vector<Referrer> users(eTableType type, KorOdbcKey key);

private:
    struct InUse;

    /// The value was judged.
    WriteResult writeCell(StyleSource& source, eTableType type, KorOdbcKey key, const Column& column,
                          const CellValue& value);
    void appendRow(StyleSource& source, eTableType type, StructRecord& record);
    void copyParts(StyleSource& source, eTableType type, KorOdbcKey from, std::int32_t to);
    void removeRow(StyleSource& source, eTableType type, KorOdbcKey key);
    WriteResult keepCells(const std::vector<WantedCell>& cells);
    WriteResult keepDeletion(StyleSource& source, const OutsideConflict& conflict);
    void apply(const PendingStep& step, bool forward);
    void abandonWalk();
    Result<> findOutcome(StyleSource& source, bool& wasStored);
    std::vector<OutsideChange> refreshWhere(const std::function<bool(StyleSource&)>& isChanged);
    bool isNoticed(StyleSource& source);
    bool isOutcomeKnown(const std::vector<PendingCommand>& next) const;
    void keepSourceTable(StyleSource& source, eTableType type);
    void finishSource(StyleSource& source, eTableType type);
    void fail(StyleSource& source, std::string error);
    SourceCommit& report(StyleSource& source);
    bool countOwners(StyleSource& source, eTableType type, KorOdbcKey key,
                     std::set<std::pair<eTableType, std::int32_t>>& seen, int& owners);

    std::map<SourceId, std::unique_ptr<StyleSource>> m_sources;
    SourceId m_currentId = SourceId::standard();
    bool m_ownerMode = false;
    PendingLog m_pending;
    std::vector<SourceCommit> m_report;
    std::map<SourceId, std::vector<eTableType>> m_written; // tables written in the open transaction
    std::map<SourceId, ServerNews> m_news;
    std::map<SourceId, std::vector<eTableType>> m_unknown; // committed, with an outcome not known yet
    bool m_inWalk = false;
    std::shared_ptr<std::vector<StyleDatabases*>> m_instances; // those of its session
};
