#pragma once

#include "data/exchange/ExchangeReport.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMRowChange.h"
#include "model/items/KorDSMDatabaseItem.h"

#include <map>
#include <vector>

/// Copies records with all that they use out of one source into another one that may be edited. What the
/// target has with the same name and content is used, not copied again.
namespace KorDSMDeepCopy {

/// The open sources into which records of `from` can be copied, the User database first.
std::vector<SourceId> targetsFor(SourceId from);

/// The other open sources that have records to copy, the Standard one first.
std::vector<SourceId> originsFor(SourceId to);

/// The records that are copied for an item: its own, or all that are filed in it, in the order of their
/// names. Empty for a part of another record, which goes with its whole.
std::vector<RowRef> recordsOf(KorDSMDatabaseItem& item);

/// The section in which the item lies; null for one outside any.
const KorDSMSection* sectionOf(KorDSMDatabaseItem& item);
/// All records of a section in a source, with the name of the group that each is filed in, in the order of
/// groups and names; those that are filed nowhere come last, under a name that says so.
struct Choice {
    RowRef row;
    KorString name;
    KorString group;
};
std::vector<Choice> choicesOf(SourceId source, const KorDSMSection& section);

struct Wish {
    SourceId from;
    SourceId to;
    std::vector<RowRef> records;
    eNamesakes namesakes = eNamesakes::kKeepBoth;
    std::map<RowRef, eNamesakes> single = {}; ///< of records for which another one was chosen
    KorString label = {};                     ///< of the step of undo; empty: that of copying
    RowRef group = {}; ///< of the target, under which new records are filed; none: where they were filed
};

/// What is copied from where, in a sentence.
KorString headOf(const Wish& wish);

/// What copied styles are drawn with otherwise there, because they leave it to their source; empty for
/// nothing.
KorString noteOf(const Wish& wish);

struct Outcome {
    bool done = false;
    KorString error; ///< why not; empty when the user cancelled
    ImportReport report;
    std::vector<KorDSMRowChange> changes; ///< for the items of the target; none of a preview
};

/// What `copy` would do now: it is done, reported and taken back without a trace.
Outcome preview(const Wish& wish);
/// Copies as one step of undo.
Outcome copy(const Wish& wish);

/// How often each fate came up, in words: "12 new, 3 there already". Empty for no rows.
KorString summaryOf(const ImportReport& report);
/// What becomes of a row, in a few words.
KorString fateText(ImportReport::Row::eFate fate);

} // namespace KorDSMDeepCopy
