#pragma once

#include "data/RowRef.h"
#include "data/StyleSource.h"

/// The parts (entries of maps, qualifiers of sets and the like) of a source whose owner does not exist, table
/// by table in the order of keys. Reads all tables; in a source that could not be read whole the result means
/// nothing.
std::vector<RowRef> orphanedParts(StyleSource& source);
