#pragma once

#include "data/pending/ReplayState.h"

/// Appends rows anew, those that a `PendingReplay` is to make.
class ReplayedRows {
public:
    /// The state must outlive the object.
    explicit ReplayedRows(ReplayState& state) : m_state(state) {}

    /// Leaves those that are there already, each with all that was appended with it.
    void leaveStored();
    /// Gives others to rows whose keys are taken by now; what was appended with them follows.
    void giveKeys();
    /// Leaves those whose whole is gone, and what belongs to them.
    void leavePartsOfNothing();
    /// Makes groups again that are gone and in which rows are filed.
    void keepGroups();
    /// Puts them into the source, with the numbers that are free by now.
    void insert();
    /// Gives other names to those whose names are taken by now.
    void rename();
    /// Adds them to what is pending.
    void log();

private:
    std::int32_t takeKey(eTableType table);
    void followKeys(const TableSchema& table, StructRecord& record) const;
    const Column* missingWhole(const TableSchema& table, const StructRecord& record) const;
    std::int32_t groupInstead(RowRef group);
    void leaveLostReferences(const TableSchema& table, const std::shared_ptr<StructRecord>& record);
    void renameIdentifying(RowRef row, const KorString& before, const KorString& after);

    ReplayState& m_state;
    std::map<eTableType, std::int64_t> m_nextKeys;
};
