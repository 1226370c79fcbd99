#pragma once

#include "records/RowRef.h"
#include "records/TableSchema.h"

#include <optional>

/// What was to be written to a cell when the question before a shared row was answered by
/// `KorDSMGuardedWrite::kCopy`.
struct KorDSMCopyWish {
    RowRef row;
    int field = 0;
    CellValue value;

    /// The last one of the current session, once; nothing where more than a cell was to be changed.
    static std::optional<KorDSMCopyWish> take();
};
