#pragma once

#include "data/RowRef.h"
#include "data/StyleSource.h"

/// The parts (entries of maps, qualifiers of sets and the like) of a source whose owner does not exist, table
/// by table in the order of keys. Reads all tables; means something only where `whyNotCompactable` is empty.
std::vector<RowRef> orphanedParts(StyleSource& source);

/// Why it cannot be told which parts have no owner, in one sentence: the owner of a part may be in a table or
/// row that could not be read. Empty when the source was read whole.
std::string whyNotCompactable(StyleSource& source);
