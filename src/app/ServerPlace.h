#pragma once

#include "session/SourceSettings.h"

class DataFolder;

/// Where a database is that a user names on the command line.
namespace ServerPlace {

/// A connection, or a source of the data folder that is on a server.
Result<ServerAddress> serverOf(const DataFolder& folder, const std::string& named);
/// The same, or a file.
SourceSettings::Place placeOf(const DataFolder& folder, const std::string& named);

} // namespace ServerPlace
