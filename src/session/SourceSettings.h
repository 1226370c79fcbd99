#pragma once

#include "data/store/odbc/ServerAddress.h"

#include <filesystem>
#include <map>
#include <set>
#include <vector>

/// The file `sources.ini` of a data folder, which says where databases are that are no files of the folder: a
/// section for each source ("standard", "user", or the folder of an add-in), with `connection` or `file`.
class SourceSettings {
public:
    /// Where a source is. Where it is not known why, it must not be looked for elsewhere.
    struct Place {
        std::filesystem::path file; ///< empty for one on a server
        ServerAddress server;
        std::string error; ///< one sentence; then there is no place
    };

    /// Reads the file, if there is one.
    explicit SourceSettings(const std::filesystem::path& folder);

    /// Sentences about what cannot be used, one each.
    const std::vector<KorString>& problems() const { return m_problems; }
    /// Where this source is; in `file` where nothing is said of it.
    Place placeOf(const std::string& source, const std::filesystem::path& file) const;
    /// What stands there of this source, a connection or a file; empty where nothing does, or one with a
    /// password.
    std::string textOf(const std::string& source) const;
    /// Lets these stand there instead, by source; nothing is said of those with an empty text. All else stays
    /// as it is written, and no file is made to say nothing.
    static Result<> write(const std::filesystem::path& folder,
                          const std::map<std::string, std::string>& texts);
    /// What can be done with a database on a server, or why nothing can.
    struct Checked : Result<KorString> {
        bool isRefused = false; ///< with another password it may be
    };
    /// Opens the database as the editor does, and closes it again.
    static Checked check(const ServerAddress& address);

    /// Whether a source is on a server.
    bool hasServers() const;
    /// The sources that it says something of, in lower case.
    std::set<std::string> sources() const;

private:
    void take(const std::string& section, const KorString& line, int number);

    std::filesystem::path m_file;
    std::map<std::string, Place> m_places;
    std::map<std::string, std::string> m_texts;
    std::vector<KorString> m_problems;
};
