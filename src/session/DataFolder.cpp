#include "session/DataFolder.h"

#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/store/LeftDatabases.h"
#include "data/store/odbc/OdbcFault.h"
#include "data/text/TextForm.h"
#include "services/AddInManager.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "session/KorDSMPasswords.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

namespace {

// Changes of the one would appear in the other, which may be there for reading only.
Result<> alone(SourceId id, const SourceSettings::Place& place) {
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId other : databases.sources()) {
        const std::string name = databases.source(other)->store().name();
        std::error_code none;
        if (other != id &&
            (place.file.empty() ? name == place.server.name : fs::equivalent(place.file, name, none)))
            return Result<>::failure(KorString::format(
                translated("\"%s\" and \"%s\" are kept in one database, \"%s\"; only the first is used until "
                           "\"sources.ini\" names another one for the second."),
                {KorDSMWhereUsed::sourceName(other), KorDSMWhereUsed::sourceName(id), name}));
    }
    return {};
}

bool isWritten(SourceId id) {
    return StyleDatabases::current().isOwnerMode() || id == SourceId::user();
}

} // namespace

bool DataFolder::isAnyOpen() {
    return !StyleDatabases::current().sources().empty();
}

void DataFolder::open() {
    KOSettings& settings = KOSettings::getInstance();
    settings.setPathData(m_folder);
    bool ownerMode = false;
    settings.readBool(KOSettings::getKeyDSM(), "OwnerMode", ownerMode);
    StyleDatabases::current().setOwnerMode(ownerMode);

    std::error_code error;
    if (m_folder.is_relative()) {
        m_complete = false;
        tell(KorString::format(
            translated("The working folder does not exist any more, so the data folder \"%s\" "
                       "cannot be found from there; give --data a whole path."),
            {m_folder.string()}));
    } else if (fs::is_directory(m_folder, error)) {
        openSources();
    } else {
        m_complete = false;
        tell(KorString::format(
            translated("There is no data folder \"%s\"; name another one with --data, or make one "
                       "with sample databases by \"detailstyles samples\"."),
            {m_folder.string()}));
    }
    takeReports();
}

bool DataFolder::takeReports() {
    const std::vector<KorString> sentences = KorHostReport::take();
    m_problems.insert(m_problems.end(), sentences.begin(), sentences.end());
    return !sentences.empty();
}

// Where it is not understood where databases are none is opened: changes would come into the wrong one.
void DataFolder::openSources() {
    const SourceSettings settings(m_folder);
    takeReports();
    AddInManager::getInstance().scan(m_folder, settings.sources());
    m_complete = !takeReports();
    if (!settings.problems().empty()) {
        m_complete = false;
        std::ranges::copy(settings.problems(), std::back_inserter(m_problems));
        return;
    }
    tellOfUnknownSources(settings);
    openSource(SourceId::standard(), settings);
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        openSource(SourceId::addIn(addIn.id().number), settings);
    openSource(SourceId::user(), settings);
}

void DataFolder::openSource(SourceId id, const SourceSettings& settings) {
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        if (id == SourceId::addIn(addIn.id().number))
            return openPlace(id, settings.placeOf(addIn.id().id.toStdString(), addIn.database()));
    if (id == SourceId::standard())
        return openPlace(id, settings.placeOf("standard", m_folder / "standard.dsdb"));
    const fs::path own = m_folder / "user.dsdb";
    const SourceSettings::Place user = settings.placeOf("user", own);
    if (user.file != own || isUserDatabaseMade(own))
        openPlace(id, user);
}

bool DataFolder::hasServers() const {
    return SourceSettings(m_folder).hasServers();
}

// All are closed first: one may be where another one was.
bool DataFolder::openAnew(std::set<SourceId>& ids) {
    StyleDatabases& databases = StyleDatabases::current();
    std::vector<SourceId> moved;
    std::ranges::copy_if(ids, std::back_inserter(moved),
                         [&](SourceId id) { return !databases.pending().hasPending(id); });
    if (moved.empty())
        return false;
    const SourceSettings settings(m_folder);
    for (const SourceId id : moved) {
        databases.closeSource(id);
        ids.erase(id);
    }
    std::ranges::copy(settings.problems(), std::back_inserter(m_problems));
    for (const SourceId id : moved)
        if (settings.problems().empty())
            openSource(id, settings);
    return true;
}

void DataFolder::tellOfUnknownSources(const SourceSettings& settings) {
    std::set<std::string> known = {"standard", "user"};
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        known.insert(KorString(addIn.id().id).lowered().toStdString());
    for (const std::string& name : settings.sources())
        if (!known.contains(name)) {
            m_complete = false;
            tell(KorString::format(
                translated("The file \"%s\" names a source \"%s\", which there is not; correct its name."),
                {(m_folder / "sources.ini").string(), name}));
        }
}

void DataFolder::openPlace(SourceId id, const SourceSettings::Place& place) {
    const Result<> result = open(id, place);
    if (!result)
        tell(result.error);
    std::error_code error;
    const bool isAbsent = !result && id == SourceId::standard() && place.file == m_folder / "standard.dsdb" &&
                          fs::symlink_status(place.file, error).type() == fs::file_type::not_found;
    if (id == SourceId::standard())
        m_noStandard = isAbsent ? KorString(result.error) : KorString();
    m_complete = m_complete && (isAbsent || StyleDatabases::current().source(id));
}

Result<> DataFolder::open(SourceId id, const SourceSettings::Place& place) {
    StyleDatabases& databases = StyleDatabases::current();
    if (!place.error.empty())
        return {place.error};
    if (Result<> result = alone(id, place); !result)
        return result;
    if (!place.file.empty())
        return databases.openFile(id, place.file.string(), !isWritten(id));
    if (const auto silent = m_silent.find(place.server.connection); silent != m_silent.end())
        return serverFault(silent->second, place.server.name); // nobody waits for it twice
    OpenedServer opened = openServer(id, place.server);
    if (opened.line.isSilence())
        m_silent[place.server.connection] = opened.line;
    if (opened.line.isRefusal())
        m_refused.push_back({id, place.server, opened.error});
    return {std::move(opened.error)};
}

// All is read at once: table by table it would be asked several times for each.
OpenedServer DataFolder::openServer(SourceId id, const ServerAddress& server) {
    StyleDatabases& databases = StyleDatabases::current();
    OpenedServer opened = KorDSMPasswords::current().open(server, isWritten(id) ? OdbcStore::eMode::kWrite
                                                                                : OdbcStore::eMode::kRead);
    if (opened.store) {
        databases.addSource(id, std::move(opened.store));
        static_cast<void>(databases.source(id)->readAll());
        opened.error.clear(); // whoever may only read is told by what is shown, and by what he cannot do
    }
    return opened;
}

Result<> DataFolder::openRefused(const ServerAddress& server) {
    const Refused first = m_refused.front();
    if (const Result<> result = alone(first.id, {{}, server, {}});
        !result) { // another one was let in meanwhile
        tell(result.error);
        m_refused.erase(m_refused.begin());
        return {};
    }
    OpenedServer opened = openServer(first.id, server);
    if (opened.line.isRefusal())
        return {std::move(opened.error)};
    std::erase(m_problems, KorString(first.error));
    if (!opened.ok()) // something else is in the way
        tell(opened.error);
    m_refused.erase(m_refused.begin());
    return {};
}

Result<> DataFolder::makeUserDatabase(const fs::path& file) {
    return buildDatabase((KorResources::folder() / "samples" / "lists").string(), file.string());
}

// Another start may make it meanwhile.
bool DataFolder::isUserDatabaseMade(const fs::path& file) {
    std::error_code error;
    const bool isThere = fs::exists(fs::symlink_status(file, error));
    const Result<> made = isThere ? Result<>() : makeUserDatabase(file);
    removeLeftDatabases(m_folder.string());
    if (made || fs::exists(file, error))
        return true;
    m_complete = false;
    tell(made.error);
    return false;
}
