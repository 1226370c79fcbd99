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
    std::vector<KorString> firstStyles = {}; ///< their names, of at most five
    bool isShared = false;                   ///< whether a change of it reaches several records

    bool isUsed() const { return !users.empty(); }
};

/// Of a part this is said of its whole.
UseCount useCountOf(SourceId source, RowRef row);
/// As "In 6 views of 2 styles"; "Not used" where users make such records to be used by
/// others; empty for what is used by none because that is so.
KorString useText(RowRef row, const UseCount& count);
/// The names of the styles, as "Styles: HB beam; HB post and 4 more"; empty for none.
KorString stylesText(const UseCount& count);

/// As "Still missing: view arrangement, views": what the row lacks before drawings can be made with it, and
/// its parts, each with its place and name; empty where nothing is.
KorString missingText(SourceId source, RowRef row);

/// Something that a record lacks which another one uses.
struct Lack {
    RowRef row;
    int column = 1; ///< of the cell that is to be filled; that of the name where parts are missing
    KorString text; ///< as "HB front: Object presentation and labeling"
};
/// What the records lack that a row and its parts use, directly or over others.
struct LacksBelow {
    std::vector<Lack> first; ///< those that are named
    std::int64_t count = 0;  ///< of all that were found
    bool areAllKnown = true; ///< false: there is more below than is looked at
};
/// Looks at each record below the row once, so it is nothing to be asked at each selection.
LacksBelow lacksBelow(SourceId source, RowRef row);

/// Which records, made to be used by others, nothing uses once these are deleted, and those are with them:
/// what uses others comes before them.
std::vector<RowRef> leftUnused(SourceId source, const std::vector<RowRef>& deleted);
/// The same as a sentence, empty for none.
KorString leftUnusedText(SourceId source, const std::vector<RowRef>& left);

} // namespace KorDSMRecordState
