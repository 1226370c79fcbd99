#pragma once

#include "data/CellRules.h"
#include "data/OutsideChanges.h"
#include "data/pending/PendingLog.h"
#include "data/pending/RowsBefore.h"

#include <map>
#include <set>

/// Carries changes of one source over to what is stored now: those that are pending, after another program
/// changed the source, or those that another run of this program left behind.
class PendingReplay {
public:
    /// Takes copies of what is pending. Both must outlive the replay.
    PendingReplay(StyleSource& source, PendingLog& pending);
    /// The same for changes of this source that stand in the log `lost`, which `run` adds to what is pending.
    PendingReplay(StyleSource& source, PendingLog& pending, PendingLog& lost);

    /// Forgets what was read and reads what the changes need again, in one state. On failure all is as
    /// before.
    Result<> readAnew();
    /// The same where all that others stored is known: nothing is read.
    void take(const StoredSince& since);
    /// Reads what the changes need, as far as it was not read yet.
    Result<> read();
    /// Makes the changes anew after either, as one group. Rows that were appended under a key, a name or
    /// numbers that are taken by now get others, and what refers to them follows; a group in which they are
    /// filed is made again where it is gone. Of what another run left, rows that are there with all that
    /// belongs to them are left. What another program changed too, and what does not hold any more, is not
    /// made, and returned.
    std::vector<OutsideConflict> run();
    /// The keys that new rows got by it, by those that they had.
    const std::map<RowRef, std::int32_t>& newKeys() const { return m_newKeys; }

private:
    struct Change {
        eTableType table = kNoTable;
        std::vector<CellChange> cells;
        std::vector<std::shared_ptr<StructRecord>> appended;
        std::vector<std::shared_ptr<StructRecord>> deleted;
    };
    struct Cell {
        RowRef row;
        const CellChange* change = nullptr;
    };
    using Cells = std::vector<Cell>; // that are decided together
    // A cell that was written in memory and is not logged yet.
    struct Written {
        RowRef row;
        const Column* column = nullptr;
        CellValue before;
        std::size_t decision = 0;
        bool mends = false;
    };

    std::set<eTableType> tables() const;
    void remember();
    void rememberReferences(const TableSchema& table, const StructRecord& record);
    void noteUnstored(const PendingLog& lost);
    void noteOrphans();

    // Rows that were appended.
    void leaveStored();
    void giveKeys();
    std::int32_t takeKey(eTableType table);
    void followKeys(const TableSchema& table, StructRecord& record) const;
    bool isLost(RowRef target) const;
    const Column* missingWhole(const TableSchema& table, const StructRecord& record) const;
    void leavePartsOfNothing();
    void keepGroups();
    std::int32_t groupInstead(RowRef group);
    void leaveLostReferences(const TableSchema& table, const std::shared_ptr<StructRecord>& record);
    void insertRows();
    void renameAppended();
    void renameIdentifying(RowRef row, const KorString& before, const KorString& after);

    // Cells that were changed.
    std::vector<Cells> decisions() const;
    std::pair<RowRef, int> decisionOf(RowRef row, const Column& column, const std::set<RowRef>& named) const;
    CellValue followed(const CellChange& cell) const;
    CellValue storedIn(RowRef row, const Column& column) const;
    eCellFault faultOfMine(RowRef row, const Column& column, const CellValue& mine) const;
    WantedCell wantedCell(RowRef row, const Column& column, const CellValue& mine) const;
    void tellGone(const Cells& cells);
    void writeCells(Cells cells, std::size_t decision);
    bool isDecidedAlike(const Cells& cells) const;
    std::vector<WantedCell> wantedCells(const Cells& cells) const;
    std::vector<WantedCell> wantedSlots(const Cells& cells) const;
    bool isSlotChanged(const Cells& cells) const;
    void write(const WantedCell& cell, std::size_t decision);
    void settleNames();
    void refuseName(const Written& name);
    void log();

    // Rows that were deleted.
    void removeRows();
    std::set<RowRef> wholesToRemove() const;
    void leaveOthers(std::set<RowRef>& going);
    std::vector<RowRef> usersOf(RowRef row) const;
    void leaveThoseInUse(std::set<RowRef>& going);
    void refuseDeletion(RowRef row, const KorString& reason);
    void askOfChanged(std::set<RowRef>& going);
    void addUsed(std::set<RowRef>& going, std::map<RowRef, std::vector<std::size_t>>& asked);
    const Column* changedColumn(RowRef row) const;
    bool isChanged(RowRef row) const;
    bool hasChangedParts(RowRef row) const;
    std::vector<RowRef> identifying(RowRef row) const;
    void removeWhole(RowRef row);

    OutsideConflict& addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                 std::shared_ptr<const StructRecord> record);
    KorString targetName(const Column& column, const CellValue& mine) const;

    StyleSource& m_source;
    PendingLog& m_pending;
    bool m_replacesPending;
    std::vector<Change> m_changes;
    RowsBefore m_before;
    std::set<RowRef> m_odd;     ///< rows that are referred to, and were not there before either
    std::set<RowRef> m_orphans; ///< parts that were deleted because they had no owner
    std::map<std::pair<RowRef, const Column*>, CellValue> m_stored; ///< of cells that show what is pending
    std::map<RowRef, std::shared_ptr<StructRecord>> m_deleted;
    std::set<RowRef> m_identified;            ///< of which something was deleted that identifies them
    std::map<RowRef, std::int32_t> m_newKeys; ///< of appended rows, by the keys that they had; -1 for none
    std::map<eTableType, std::int64_t> m_nextKeys;
    std::map<RowRef, std::shared_ptr<StructRecord>> m_appended; ///< by the keys that they have now
    std::vector<Written> m_written;                             ///< in the order of decisions
    std::vector<OutsideConflict> m_conflicts;
};
