#pragma once

#include <cstdint>
#include <string>

class DataFolder;

/// What is done with the styles of a database on a server.
enum class eServerAction : std::uint8_t { kCreate, kCheck, kUpgrade, kStatus };

struct ServerOptions {
    eServerAction action = eServerAction::kCheck;
    std::string where; ///< a source of `sources.ini`, or a connection
};

struct CopyDatabaseOptions {
    std::string from; ///< a file, a source of `sources.ini`, or a connection
    std::string to;
};

/// Makes the schema of styles with its roles, tells whether and how it can be used, brings it to the present
/// version, or tells what it is.
int serverCommand(DataFolder& folder, const ServerOptions& options);
/// Copies a whole database between files and servers, all or nothing.
int copyDatabaseCommand(DataFolder& folder, const CopyDatabaseOptions& options);
