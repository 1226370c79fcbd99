#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <string>

/// What a picture beside a selected item shows: a detail style, and in it the selected record.
struct KorDSMPreviewSubject {
    SourceId source;
    RowRef row;                ///< the selected record
    std::int32_t style = 0;    ///< key; 0: there is none
    bool isBelowStyle = false; ///< the tree leads to the record by the style; else it is one that uses it
    std::string why;           ///< where there is no style: one sentence for the user

    /// Of an item of the current source; of none for null.
    static KorDSMPreviewSubject of(const KorDSMDatabaseItem* item);
    bool operator==(const KorDSMPreviewSubject&) const = default;
};
