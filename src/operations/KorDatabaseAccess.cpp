#include "operations/KorDatabaseAccess.h"

#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/store/SqliteStore.h"

#include <filesystem>

namespace {

bool isOfEarlierInstallation(const KorString& path) {
    const std::string extension = std::filesystem::path(path.toStdString()).extension().string();
    return KorString(extension).lowered() == KorString(".") + KorDatabaseAccess::getAccessExtension();
}

} // namespace

Result<> KorDatabaseAccess::setConnection(eDSN dsn, eIndex index, const KorString& path) {
    const SourceId id{dsn, index};
    StyleDatabases& databases = StyleDatabases::current();
    databases.closeSource(id);
    if (isOfEarlierInstallation(path))
        return migrateMdb(path);
    const std::string file = path.toStdString();
    const auto identity = fileIdentity(file);
    if (identity && OpenFiles::contains(*identity))
        return faultResult(eStoreFault::kOpenHere, file);
    OpenedStore opened = SqliteStore::open(file, SqliteStore::eMode::kRead, SqliteStore::eCheck::kFull);
    if (!opened.store)
        return {std::move(opened.error)};
    databases.addSource(id, std::move(opened.store));
    return {};
}

Result<> KorDatabaseAccess::setConnectionString(eDSN dsn, eIndex index, const KorString& connection) {
    std::string_view rest = connection.view();
    while (!rest.empty()) {
        const std::string_view entry = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(rest.size(), entry.size() + 1));
        const auto equals = entry.find('=');
        const KorString name = KorString(entry.substr(0, equals)).trimmed().lowered();
        if (equals != std::string_view::npos && (name == "dbq" || name == "database"))
            return setConnection(dsn, index, KorString(entry.substr(equals + 1)).trimmed());
    }
    return Result<>::failure(KorString::format(
        translated("The connection \"%s\" names no file; add an entry \"DBQ=\" with its path."),
        {connection}));
}

int KorDatabaseAccess::detachDatabase(eDSN dsn, eIndex index) {
    StyleDatabases& databases = StyleDatabases::current();
    const bool wasOpen = databases.source({dsn, index}) != nullptr;
    databases.closeSource({dsn, index});
    return wasOpen ? 1 : 0;
}

Result<> KorDatabaseAccess::migrateMdb(const KorString& path) {
    return Result<>::failure(KorString::format(
        translated(
            "The file \"%s\" has the format of an earlier installation, which this program cannot read; "
            "export its styles there into a .%s file and import that."),
        {path, getDatabaseExtension()}));
}
