#pragma once

#include "data/OutsideChanges.h"
#include "data/pending/PendingLog.h"
#include "data/pending/RowsBefore.h"

#include <map>
#include <set>

/// What the steps of a `PendingReplay` share: what is to be made anew in a source, what was there when that
/// was changed, and what has come of it so far.
struct ReplayState {
    /// What is to be made anew in one table. The records are copies.
    struct Change {
        eTableType table = kNoTable;
        std::vector<CellChange> cells;
        std::vector<std::shared_ptr<StructRecord>> appended;
        std::vector<std::shared_ptr<StructRecord>> deleted;
    };

    /// Both must outlive the state.
    ReplayState(StyleSource& of, PendingLog& log) : source(of), pending(log), rowsBefore(of) {}

    StyleSource& source;
    PendingLog& pending;
    std::vector<Change> changes;
    RowsBefore rowsBefore;
    std::set<RowRef> odd;     ///< rows that are referred to, and were not there before either
    std::set<RowRef> orphans; ///< parts that were deleted because they had no owner
    std::map<std::pair<RowRef, const Column*>, CellValue> storedCells; ///< of those that show what is pending
    std::map<RowRef, std::shared_ptr<StructRecord>> deleted;
    std::set<RowRef> identified;            ///< of which something was deleted that identifies them
    std::map<RowRef, std::int32_t> newKeys; ///< of appended rows, by the keys that they had; -1 for none
    std::map<RowRef, std::shared_ptr<StructRecord>> appended; ///< by the keys that they have now
    std::vector<OutsideConflict> conflicts;

    /// Adds one about a row; `column` and `record` as the conflict has them. Valid until the next is added.
    OutsideConflict& addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                 std::shared_ptr<const StructRecord> record);
    /// The name that the row had to which `mine` refers; empty where the column is no reference.
    KorString targetName(const Column& column, const CellValue& mine) const;
    /// Whether a reference means a row that is gone; negative ones mean a default.
    bool isLost(RowRef target) const;
    /// What the database holds now.
    CellValue storedIn(RowRef row, const Column& column) const;
};
