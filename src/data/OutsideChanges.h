#pragma once

#include "base/Result.h"
#include "data/store/StoredSince.h"
#include "records/KorDSNDefinitions.h"

#include <map>
#include <optional>

/// A cell with what this program wants it to hold.
struct WantedCell {
    RowRef row;
    const Column* column = nullptr;
    CellValue mine;
    KorString targetName = {}; ///< of the row that `mine` refers to, as it was known last
};

/// A pending change that could not be kept because another program changed the same thing meanwhile. The
/// source shows what is stored now, or of a new row what is left of it. What belongs together is one
/// conflict: the slots of one kind of a row, the names of a row and of what identifies it, and a row that was
/// deleted with its parts, what identifies it, and what only it used.
struct OutsideConflict {
    enum class eKind : std::uint8_t {
        kCell,   ///< a cell that both changed
        kDelete, ///< a row that this program deleted and the other one changed
        kGone,   ///< a row that this program changed, or gave a part, and the other one deleted
    };

    eKind kind = eKind::kCell;
    const TableSchema* table = nullptr;
    std::int32_t key = 0;
    const Column* column = nullptr; ///< that differs; null for a new row, and for one whose parts differ
    /// The row as it is stored now; one that is gone as it was known last, or null; a new one itself.
    std::shared_ptr<const StructRecord> record;
    KorString name;      ///< of the row, as far as known, where `record` is null
    KorString wholeName; ///< of a new row: that of its whole that is gone, as far as known
    /// The row as it was stored when this program changed it; null where that is not known. Of what another
    /// run left it is so in the cells that are decided, and else as it is stored now.
    std::shared_ptr<const StructRecord> before;
    std::optional<CellValue> stored; ///< what the cell holds now; none when the row is gone
    std::optional<CellValue> mine;   ///< what this program wrote into the cell; none for a whole row
    KorString targetName;            ///< of the row that `mine` refers to, as it was known last
    std::vector<WantedCell> cells;   ///< all that are decided with `column`, itself among them
    std::vector<RowRef> identifying; ///< what goes with a row that was deleted, because it identifies it
    std::vector<RowRef> used;        ///< what goes after it unless another row uses it by then
    KorString reason;    ///< one sentence why this program's change does not hold any more; else empty
    bool isMade = false; ///< whether the change is made all the same, in the way that `reason` says
    StoredBy by;         ///< who stored what is stored now; empty where that is not known
};

/// A row before something happened and after it, each null where it is not there.
struct RowDifference {
    RowRef row;
    std::shared_ptr<const StructRecord> before;
    std::shared_ptr<const StructRecord> after;
};

/// What reading one source again brought. After a failure memory shows what it showed before, and reading can
/// be tried again.
struct OutsideChange : Result<> {
    SourceId source = {};
    std::string file = {};
    std::vector<OutsideConflict> conflicts = {};
    std::map<RowRef, std::int32_t> newKeys = {}; ///< of pending new rows, by those that they had before
    /// The rows that are shown otherwise now; none where everything was read again.
    std::optional<std::vector<RowDifference>> rows = {};
    bool wasStored = false; ///< what a broken line left in doubt was stored, and is not pending any more
};
