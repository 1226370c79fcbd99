#pragma once

#include "data/StyleDatabases.h"

/// Of steps that were taken back, in the order in which they can be brought again: the first commands, each
/// whole, that do the same upon what the databases hold now as when they were made. What others stored may
/// have changed the rows that they change, refer to or delete, or taken their names.
std::vector<PendingStep> stepsThatHold(StyleDatabases& databases, const std::vector<PendingStep>& steps);
