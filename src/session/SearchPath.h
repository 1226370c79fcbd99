#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

/// The names of what a row stands in, from the section down: groups, wholes, and of those that use it the
/// first one. Without the row itself; empty where it stands in nothing.
std::vector<KorString> searchPathTo(StyleSource& source, RowRef row);
