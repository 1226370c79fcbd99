#pragma once

#include "base/Result.h"

#include <string>

/// Where a database on a server is: a connection as a user writes it, taken apart.
struct ServerAddress {
    std::string connection;    ///< for the driver manager
    std::string schema;        ///< of the styles
    std::string name;          ///< in sentences: server, database and schema, nothing secret
    std::string password = {}; ///< where neither connection nor driver has one; never written down
    std::string driver = {};   ///< its name; empty where the connection does not say it
    std::string user = {};     ///< who logs in; the same

    static constexpr const char* kUsualSchema = "detailstyles";

    /// Whether a text is one, good or bad, and not the name of a file: it says something of a server, or has
    /// a password, wherever that stands in it.
    static bool isConnection(const std::string& text);
    /// Whether there is a password in it, which is neither shown nor written.
    static bool holdsPassword(const std::string& text);
    /// Reads `Driver=...;Server=...;Database=...;Schema=...` or `DSN=...;Schema=...`. `origin` is where it
    /// stands, in the sentence of a failure. A password is refused: it would be read by whoever reads that.
    static Result<ServerAddress> parse(const std::string& text, const std::string& origin);
    /// The connection with the password, for the driver manager alone.
    std::string login() const;
};
