#pragma once

#include "data/pending/ReplayState.h"

/// Deletes rows anew, those that a `PendingReplay` is to delete: each with its parts and with what identifies
/// it.
class ReplayedDeletions {
public:
    /// The state must outlive the object.
    explicit ReplayedDeletions(ReplayState& state) : m_state(state) {}

    /// Deletes them, or makes conflicts of them, and adds what was deleted to what is pending.
    void run();

private:
    std::set<RowRef> wholesToRemove() const;
    void leaveOthers(std::set<RowRef>& going);
    std::vector<RowRef> usersOf(RowRef row) const;
    void leaveThoseInUse(std::set<RowRef>& going);
    void refuse(RowRef row, const KorString& reason);
    void askOfChanged(std::set<RowRef>& going);
    void addUsed(std::set<RowRef>& going, std::map<RowRef, std::vector<std::size_t>>& asked);
    const Column* changedColumn(RowRef row) const;
    bool isChanged(RowRef row) const;
    bool hasChangedParts(RowRef row) const;
    std::vector<RowRef> identifying(RowRef row) const;
    void removeWhole(RowRef row);

    ReplayState& m_state;
};
