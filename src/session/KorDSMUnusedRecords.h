#pragma once

#include "model/KorDSMDataStructure.h"
#include "records/RowRef.h"

/// Records that nothing uses which the trees show, such as a view in no style: without a place of their own
/// they stand below their source, in the section of detail styles, from when somebody went there until the
/// sections are loaded anew.
namespace KorDSMUnusedRecords {

/// The item of such a record, which the structure owns; made where there is none yet. Null for a row that
/// does not exist, and for kinds that are never shown by themselves: groups, detail styles, parts of others,
/// and what only pages show.
KorDSMDatabaseItem* itemOf(KorDSMDataStructure& structure, SourceId source, RowRef row);

/// The same for a part of such a record, and for what only pages show of one: the item of what has it.
KorDSMDatabaseItem* editorOf(KorDSMDataStructure& structure, SourceId source, RowRef row);

/// The name of a record, or of the one that it is a part of; empty for one that does not exist.
KorString nameOf(SourceId source, RowRef row);

} // namespace KorDSMUnusedRecords
