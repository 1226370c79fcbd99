#pragma once

#include "base/KorString.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <utility>
#include <vector>

/// What is said of a record as a whole: who uses it, and what it lacks.
namespace KorDSMRecordState {

/// How often a record is used in its own source.
struct UseCount {
    std::vector<std::pair<eTableType, int>> users; ///< records of a kind that use it, by table
    int styles = 0;                                ///< detail styles that it is reached from
    bool areMoreStyles = false; ///< whether there are more than `styles`: nobody waits for all to be counted
    bool isShared = false;      ///< whether a change of it reaches several records

    bool isUsed() const { return !users.empty(); }
};

/// Of a part this is said of its whole.
UseCount useCountOf(SourceId source, RowRef row);
/// As "In 6 views of 4 styles"; "Not used" where users make such records to be used by others; empty for what
/// is used by none because that is so.
KorString useText(RowRef row, const UseCount& count);

/// As "Still missing: view arrangement, views": what the row and its parts lack before drawings can be made
/// with it; empty where nothing is.
KorString missingText(SourceId source, RowRef row);

/// Which records, made to be used by others, nothing uses once these are deleted: a sentence, empty for none.
/// Of those it says only what the deleted ones use themselves.
KorString leftUnusedText(SourceId source, const std::vector<RowRef>& deleted);

} // namespace KorDSMRecordState
