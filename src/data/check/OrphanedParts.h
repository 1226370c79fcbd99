#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

/// The parts (entries of maps, qualifiers of sets and the like) of a source whose owner does not exist, table
/// by table in the order of keys. Reads all tables; means something only where the source is
/// complete: the owner of a part may be in a table or row that could not be read.
std::vector<RowRef> orphanedParts(StyleSource& source);
