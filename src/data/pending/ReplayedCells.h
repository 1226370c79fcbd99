#pragma once

#include "data/CellRules.h"
#include "data/pending/ReplayState.h"

/// Changes cells anew, those that a `PendingReplay` is to change. What belongs together is decided together.
class ReplayedCells {
public:
    /// The state must outlive the object.
    explicit ReplayedCells(ReplayState& state) : m_state(state) {}

    /// Writes them, or makes conflicts of them.
    void write();
    /// Leaves the old names where others have taken the new ones by now.
    void settleNames();
    /// Says of conflicts about names what is in the way of mine, when all names are as they stay.
    void tellTakenNames();
    /// Adds what was written to what is pending.
    void log();

private:
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

    std::vector<Cells> decisions() const;
    std::pair<RowRef, int> decisionOf(RowRef row, const Column& column, const std::set<RowRef>& named) const;
    CellValue followed(const CellChange& cell) const;
    eCellFault faultOfMine(RowRef row, const Column& column, const CellValue& mine) const;
    WantedCell wantedCell(RowRef row, const Column& column, const CellValue& mine) const;
    void tellGone(const Cells& cells);
    void decide(Cells cells, std::size_t decision);
    std::shared_ptr<const StructRecord> asChangeFound(const Cells& cells, RowRef row,
                                                      const StructRecord& now) const;
    bool isDecidedAlike(const Cells& cells) const;
    std::vector<WantedCell> wantedCells(const Cells& cells) const;
    std::vector<WantedCell> wantedSlots(const Cells& cells) const;
    bool isSlotChanged(const Cells& cells) const;
    void write(const WantedCell& cell, std::size_t decision);
    void refuseName(const Written& name);

    ReplayState& m_state;
    std::vector<Written> m_written; // in the order of decisions
};
