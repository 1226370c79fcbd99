#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <vector>

/// What a record lacks before drawings can be made with it: a reference that was not chosen yet, or parts of
/// which there are none.
struct StillMissing {
    const TableSchema* table = nullptr; ///< of the column, or of the parts
    const Column* column = nullptr;     ///< the first one of slots; null for parts

    bool operator==(const StillMissing&) const = default;
};

/// What is missing, as in "it has no view": a record of this kind, or what the column holds.
std::string wordFor(const StillMissing& missing);

/// What the row itself lacks, in the order in which it is declared; nothing for a row that does not exist.
/// A reference to a row that is gone is chosen all the same. Of an incomplete source parts may only be
/// unread.
std::vector<StillMissing> stillMissing(StyleSource& source, RowRef row);

/// Of what a part is one, in a sentence; empty for what is no part of an existing row.
KorString wholeSentence(StyleSource& source, RowRef row);
