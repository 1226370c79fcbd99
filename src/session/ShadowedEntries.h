#pragma once

#include "data/check/ConsistencyCheck.h"

/// Entries of maps before which others take all that they could, so that they never act, as notes. Those
/// whose set is the same as that of one before them `ConsistencyCheck` finds. What was not read yet is read.
std::vector<Finding> shadowedEntries(StyleSource& source);
