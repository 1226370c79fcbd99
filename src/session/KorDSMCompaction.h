#pragma once

#include "base/Result.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/KorDSNDefinitions.h"

/// Removing the parts of a source (entries of maps, qualifiers of sets and the like) whose record does not
/// exist.
namespace KorDSMCompaction {

/// Whether the item is a database or an add-in that may be edited.
bool isFor(const KorDSMDatabaseItem& item);

/// What would be done.
struct Plan {
    std::size_t parts = 0;
    KorString sentence; ///< asks whether these parts are to go; without parts it says that there are none
};
/// Reads all of the source, which is open. Fails where not all can be read.
Result<Plan> plan(SourceId source);

/// Deletes them as one step of undo. Returns whether any went.
bool run(SourceId source);

} // namespace KorDSMCompaction
