#pragma once

#include "data/CellRules.h"
#include "data/OutsideChanges.h"
#include "data/pending/PendingLog.h"
#include "records/RowRef.h"

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
    StoreResult readAnew();
    /// Reads what the changes need, as far as it was not read yet.
    StoreResult read();
    /// Makes the changes anew after either, as one group. Rows that were appended under a key, a name or
    /// numbers that are taken by now get others, and what refers to them follows; those that are stored as
    /// they were are left. What another program changed too, and what does not hold any more, is not made,
    /// and returned.
    std::vector<OutsideConflict> run();

private:
    struct Change {
        eTableType table = kNoTable;
        std::vector<CellChange> cells;
        std::vector<std::shared_ptr<StructRecord>> appended;
        std::vector<std::shared_ptr<StructRecord>> deleted;
    };
    // A cell that was written in memory and is not logged yet.
    struct Written {
        eTableType table = kNoTable;
        KorOdbcKey key;
        const Column* column = nullptr;
        CellValue before;
    };

    std::set<eTableType> tables() const;
    void remember(RowRef row);
    std::shared_ptr<const StructRecord> remembered(RowRef row) const;
    void rememberOddReferences(const TableSchema& table, const StructRecord& record);
    void noteUnstored();

    void giveKeys();
    void followKeys(const TableSchema& table, StructRecord& record) const;
    CellValue followed(const CellChange& cell) const;
    const Column* missingWhole(const TableSchema& table, const StructRecord& record) const;
    void leavePartsOfNothing();
    void leaveLostReferences(const TableSchema& table, const std::shared_ptr<StructRecord>& record);
    void insertRows();
    void writeCell(eTableType table, const CellChange& cell);
    void settleNames();
    void renameAppended();
    void log();
    void removeRows();
    std::set<RowRef> wholesToRemove() const;
    bool isGoing(RowRef row, const std::set<RowRef>& going) const;
    void leaveThoseInUse(std::set<RowRef>& going);
    bool addChanged(RowRef row);
    bool hasChangedParts(RowRef row) const;
    void removeWhole(RowRef row);

    OutsideConflict& addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                 std::shared_ptr<const StructRecord> record);
    void setMine(OutsideConflict& conflict, const CellValue& mine) const;

    StyleSource& m_source;
    PendingLog& m_pending;
    bool m_replacesPending;
    std::vector<Change> m_changes;
    std::map<RowRef, std::shared_ptr<const StructRecord>> m_before; ///< to name those that are gone
    std::set<RowRef> m_odd; ///< rows that are referred to, and were not there before either
    std::map<std::pair<RowRef, const Column*>, CellValue> m_stored; ///< of cells that show what is pending
    std::map<RowRef, std::shared_ptr<StructRecord>> m_deleted;
    std::map<RowRef, std::int32_t> m_newKeys; ///< of appended rows, by the keys that they had
    std::set<RowRef> m_appended;              ///< by the keys that they have now
    std::vector<Written> m_written;
    std::vector<OutsideConflict> m_conflicts;
};
