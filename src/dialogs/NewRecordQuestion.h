#pragma once

#include "base/KorString.h"
#include "records/KorDSNDefinitions.h"
#include "records/TableTypes.h"

#include <cstdint>
#include <optional>

class QWidget;

/// What the user says of a record that is about to be made.
struct NewRecord {
    KorString name;
    std::int32_t group =
        0; ///< key of the group or category that it goes into; 0 where such records are not filed
};

/// Asks for the name of a new record of this table in the current source, and for its group where such
/// records are filed. Where there is no group yet, it asks for the name of one and makes it, as a step of its
/// own. Nothing when the user wants none, or the group could not be made, which is told.
std::optional<NewRecord> askForNewRecord(eTableType table, SourceId source, QWidget* parent);
