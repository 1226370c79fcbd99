#pragma once

#include "data/StyleDatabases.h"
#include "data/store/odbc/OdbcStore.h"
#include "session/SourceSettings.h"

#include <filesystem>
#include <map>
#include <set>

/// A data folder with its style databases: `standard.dsdb`, `user.dsdb`, and one `styles.dsdb` in each folder
/// of `addins`; or wherever `sources.ini` puts them. What cannot be used is left out and told, and the
/// program goes on with the rest.
class DataFolder {
public:
    explicit DataFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Opens all databases as sources of the current `StyleDatabases`. Where there is no User database yet
    /// one is made, if the folder may be written; not where `sources.ini` says its place, which may be
    /// mistyped.
    void open();
    /// Makes a User database: without styles, with the lists that their choices offer. Fails where the file
    /// is there already or cannot be written.
    static Result<> makeUserDatabase(const std::filesystem::path& file);
    /// Whether a database is on a server.
    bool hasServers() const;
    /// Opens sources where they are by now, in the place of what was open as these; where one cannot be
    /// opened none is: changes would come into the wrong database. Takes those out of `ids` for which that
    /// was tried; those with pending changes stay as they are. Returns whether there were any.
    bool openAnew(std::set<SourceId>& ids);
    /// Whether there are open databases, wherever they came from.
    static bool isAnyOpen();

    /// A source that is not open because its server does not let the user in.
    struct Refused {
        SourceId id;
        ServerAddress server;
        std::string error;
    };
    const std::vector<Refused>& refused() const { return m_refused; }
    /// Opens the first of these by an address with a password. On success the server let the user in, and it
    /// is none of them any more; what else is in the way is a problem.
    Result<> openRefused(const ServerAddress& server);

    /// Leaves the first of these closed.
    void leaveRefused() { m_refused.erase(m_refused.begin()); }

    /// Adds what the services have reported so far to the problems. Returns whether there was anything.
    bool takeReports();

    const std::filesystem::path& path() const { return m_folder; }
    /// Sentences for the user, one for each thing that is wrong.
    const std::vector<KorString>& problems() const { return m_problems; }
    /// Whether every database and add-in that should be there is in use.
    bool isComplete() const { return m_complete && m_noStandard.isEmpty(); }
    /// The same but for a Standard whose file is simply not there.
    bool isCompleteButForStandard() const { return m_complete; }
    /// The problem that this Standard is; empty where there is one.
    const KorString& noStandard() const { return m_noStandard; }

private:
    void openSources();
    void openSource(SourceId id, const SourceSettings& settings);
    void openPlace(SourceId id, const SourceSettings::Place& place);
    Result<> open(SourceId id, const SourceSettings::Place& place);
    OpenedServer openServer(SourceId id, const ServerAddress& server);
    void tellOfUnknownSources(const SourceSettings& settings);
    bool isUserDatabaseMade(const std::filesystem::path& file);
    void tell(const KorString& sentence) { m_problems.push_back(sentence); }

    std::filesystem::path m_folder;
    std::vector<KorString> m_problems;
    KorString m_noStandard;
    std::vector<Refused> m_refused;
    std::map<std::string, OdbcError> m_silent; // servers, by connection
    bool m_complete = true;
};
