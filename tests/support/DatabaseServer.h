#pragma once

#include "support/TempFolder.h"

#include <string>

#include <sys/types.h>

/// A database server of the test program's own: made in a temporary folder when it is first asked for,
/// reached by a socket there alone, and ended with the program, however that ends. Where the packages that it
/// needs are missing each test that asks for it fails.
class DatabaseServer {
public:
    /// The one of this program.
    static DatabaseServer& instance();
    ~DatabaseServer();
    DatabaseServer(const DatabaseServer&) = delete;
    DatabaseServer& operator=(const DatabaseServer&) = delete;

    /// A connection, by the socket in `folder`, to styles in this schema.
    std::string connection(const std::string& schema, const std::string& user = kUser) const {
        return connectionBy(m_folder.path(), schema, user);
    }
    static std::string connectionBy(const std::filesystem::path& folder, const std::string& schema,
                                    const std::string& user = kUser);
    /// A name that no other schema has.
    std::string newSchema() { return "styles_" + std::to_string(++m_schemas); }
    /// Its socket.
    std::string socket() const { return m_folder.file(kSocket); }

    static constexpr const char* kUser = "office";
    /// A user who needs a password, where a test makes him.
    static constexpr const char* kGuarded = "guarded";
    static constexpr const char* kSocket = ".s.PGSQL.5432";

private:
    DatabaseServer();

    TempFolder m_folder;
    pid_t m_process = 0;
    int m_schemas = 0;
};
