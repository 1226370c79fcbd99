#pragma once

#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"
#include "records/TableSchema.h"

#include <algorithm>
#include <memory>
#include <vector>

/// What a command, or one step of undo or redo, did to one row.
struct KorDSMRowChange {
    enum class eKind { kChanged, kAppended, kDeleted };

    SourceId source;
    RowRef row;
    eKind kind = eKind::kChanged;
    std::vector<const Column*> columns;         ///< of a changed row: those that have another value now
    std::shared_ptr<const StructRecord> record; ///< of an appended or deleted row: as it came or went

    bool changedColumn(int number) const {
        return std::ranges::any_of(columns,
                                   [number](const Column* column) { return column->number == number; });
    }
};
