#pragma once

#include "data/pending/ReplayState.h"

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
    const std::map<RowRef, std::int32_t>& newKeys() const { return m_state.newKeys; }

private:
    std::set<eTableType> tables() const;
    void remember();
    void rememberReferences(const TableSchema& table, const StructRecord& record);
    void noteUnstored(const PendingLog& lost);
    void noteOrphans();

    ReplayState m_state;
    bool m_replacesPending;
};
