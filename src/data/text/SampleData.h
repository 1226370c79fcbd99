#pragma once

#include "data/store/StyleStore.h"

/// Fills a data folder from the folder `samples` in `resourceFolder`: `standard.dsdb`, `user.dsdb`, the
/// add-ins with their databases, and the line type files. What is there already stays untouched, so a second
/// call does nothing. The data folder is made when it does not exist.
Result<> buildSampleData(const std::string& resourceFolder, const std::string& dataFolder);
