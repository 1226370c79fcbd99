#pragma once

#include "data/KorDSNDefinitions.h"
#include "data/store/StyleStore.h"

/// A pending change that could not be kept because another program changed the same thing in the file. The
/// source shows what is stored now.
struct OutsideConflict {
    enum class eKind : std::uint8_t {
        kCell,   ///< a cell that both changed
        kDelete, ///< a row that this program deleted and the other one changed
        kGone,   ///< a row that this program changed, or gave a part, and the other one deleted
    };

    eKind kind = eKind::kCell;
    StoreConflict values; ///< stored, mine and before, as texts to be compared
    KorString rowName;
    CellValue mine; ///< cells only
};

/// What reading one source again brought.
struct OutsideChange {
    SourceId source;
    std::string file;
    std::string error; ///< one sentence when the file cannot be read; then memory shows what it showed
                       ///< before, and reading can be tried again
    std::vector<OutsideConflict> conflicts;
};
