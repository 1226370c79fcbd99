#pragma once

#include "data/OutsideChanges.h"
#include "data/RowRef.h"
#include "data/pending/PendingLog.h"

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
    /// Makes the changes anew after either, as one group. Rows that were appended under a key that is taken
    /// by now get another one, and what refers to them follows; those that are stored as they were are left.
    std::vector<OutsideConflict> run();

private:
    struct Change {
        eTableType table = kNoTable;
        std::vector<CellChange> cells;
        std::vector<std::shared_ptr<StructRecord>> appended;
        std::vector<std::shared_ptr<StructRecord>> deleted;
    };

    std::set<eTableType> tables() const;
    void giveKeys();
    void followKeys(const TableSchema& table, StructRecord& record) const;
    const Column* missingWhole(const TableSchema& table, const StructRecord& record) const;
    void remember(RowRef row);
    std::shared_ptr<const StructRecord> remembered(RowRef row) const;
    void append(eTableType table, const std::shared_ptr<StructRecord>& record);
    void writeCell(eTableType table, const CellChange& cell);
    void remove(eTableType table, const StructRecord& before);
    void addGone(eTableType table, const std::shared_ptr<StructRecord>& appended);

    StyleSource& m_source;
    PendingLog& m_pending;
    bool m_replacesPending;
    std::vector<Change> m_changes;
    std::map<RowRef, std::shared_ptr<const StructRecord>> m_before; ///< to name those that are gone
    std::map<RowRef, std::int32_t> m_newKeys; ///< of appended rows, by the keys that they had
    std::set<RowRef> m_appended;              ///< by the keys that they have now
    std::vector<OutsideConflict> m_conflicts;
};
