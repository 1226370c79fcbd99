#include "app/ServerPlace.h"

#include "base/Translation.h"
#include "session/DataFolder.h"

SourceSettings::Place ServerPlace::placeOf(const DataFolder& folder, const std::string& named) {
    if (ServerAddress::isConnection(named)) {
        Result<ServerAddress> address =
            ServerAddress::parse(named, translated("the command line").toStdString());
        return {{}, std::move(address.value), std::move(address.error)};
    }
    const SourceSettings settings(folder.path());
    for (const KorString& problem : settings.problems())
        return {{}, {}, problem.toStdString()};
    return settings.placeOf(named, named);
}

Result<ServerAddress> ServerPlace::serverOf(const DataFolder& folder, const std::string& named) {
    SourceSettings::Place place = placeOf(folder, named);
    if (!place.error.empty())
        return Result<>{std::move(place.error)};
    if (!place.file.empty())
        return Result<>::failure(KorString::format(
            translated(
                "\"%s\" is no database on a server; name a source that has a connection in sources.ini, or "
                "write the connection itself."),
            {named}));
    return std::move(place.server);
}
