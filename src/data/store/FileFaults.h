#pragma once

#include "data/store/StoreFault.h"

#include <optional>
#include <string>

// What can be told of a file before it is opened; see `FileIdentity`.

/// What hinders reading `path` as a database: missing, no file, empty, not permitted.
std::optional<eStoreFault> faultOfReading(const std::string& path);
/// What hinders changing `path`: the file or its folder, in which the journal stands, may not be written.
std::optional<eStoreFault> faultOfWriting(const std::string& path);
/// What hinders making a new file in the folder of `path`.
std::optional<eStoreFault> faultOfFolder(const std::string& path);
