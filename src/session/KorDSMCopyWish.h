#pragma once

#include "records/RowRef.h"
#include "records/TableSchema.h"
#include "records/WriteResult.h"

#include <functional>
#include <optional>

/// What was to be changed when the question before a shared row was answered by
/// `KorDSMGuardedWrite::kCopy`: a cell of the row or of one of its parts, or the list of its parts.
struct KorDSMCopyWish {
    RowRef row = {};
    int field = 0;
    CellValue value = {};
    /// Where it is the list: makes the change in that of the copy, as a part of a step that is under way.
    std::function<WriteResult(RowRef copy)> changeList = {};

    /// Keeps it as the last one of the current session.
    static void keep(KorDSMCopyWish wish);
    /// The last one, once; nothing where a row was to be stored whole.
    static std::optional<KorDSMCopyWish> take();
};
