#pragma once

#include "base/KorString.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <vector>

class KorDSMPreview;

/// What the rows of a list do with the objects of the sample part that the preview shows: entries of a map,
/// of which the first one that fits decides, and qualifiers of a set.
namespace KorDSMListEffect {

struct Row {
    std::int32_t key = 0;
    bool isOff = false;                ///< left out on trial
    std::vector<int> takes = {};       ///< objects of the part that it decides, or for which it holds
    std::vector<int> unknown = {};     ///< those of which nobody knows whether it fits
    std::vector<int> takenBefore = {}; ///< those that it fits, and a row before decides
    KorString never = {}; ///< why it can never act, and what to do; empty where that is not proven
};

/// Whether rows of this table stand in such a list.
bool isFor(eTableType parts);
/// Whether of the rows the first one that fits decides, so that one can be taken before, or left out.
bool isFirstMatch(eTableType parts);
/// Of the rows of a record of the source. Without a preview only what holds of every part is known.
std::vector<Row> of(SourceId source, RowRef whole, const KorDSMPreview* preview);
/// Why a row of the source takes nothing of any part yet, in few words; empty where it could.
KorString whyNothing(SourceId source, RowRef part);

} // namespace KorDSMListEffect
