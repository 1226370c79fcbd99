#pragma once

#include <string>

/// Removes the unfinished databases that killed programs left in a folder under names of their own.
void removeLeftDatabases(const std::string& folder);
