#pragma once

#include "data/OutsideChanges.h"
#include "data/RowRef.h"
#include "data/pending/PendingLog.h"

#include <map>
#include <set>

/// Carries the pending changes of one source over to what is stored now, after another program changed it.
class PendingReplay {
public:
    /// Takes copies of what is pending. Both must outlive the replay.
    PendingReplay(StyleSource& source, PendingLog& pending);

    /// Forgets what was read and reads what the changes need again, in one state. On failure all is as before.
    StoreResult readAnew();
    /// Makes the changes anew after `readAnew`, as one group. Rows that were
    /// appended under a key that is taken by now get another one, and what refers to them follows.
    std::vector<OutsideConflict> run();

private:
    struct Change {
        eTableType table = kNoTable;
        std::vector<CellChange> cells;
        std::vector<std::shared_ptr<StructRecord>> appended;
        std::vector<std::shared_ptr<StructRecord>> deleted;
    };

    void giveKeys();
    void followKeys(const TableSchema& table, StructRecord& record) const;
    bool hasWholes(const TableSchema& table, const StructRecord& record) const;
    void append(eTableType table, const std::shared_ptr<StructRecord>& record);
    void writeCell(eTableType table, const CellChange& cell);
    void remove(eTableType table, const StructRecord& before);
    void addConflict(OutsideConflict::eKind kind, StoreConflict values, const KorString& rowName,
                     const CellValue& mine);

    StyleSource& m_source;
    PendingLog& m_pending;
    std::vector<Change> m_changes;
    std::map<RowRef, std::int32_t> m_newKeys; ///< of appended rows, by the keys that they had
    std::set<RowRef> m_appended;              ///< by the keys that they have now
    std::vector<OutsideConflict> m_conflicts;
};
