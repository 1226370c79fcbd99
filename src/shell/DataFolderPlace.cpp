#include "shell/DataFolderPlace.h"

#include <QStandardPaths>

namespace fs = std::filesystem;

namespace {

// Where the program is installed the folder of its own files has the same name.
bool holdsDatabases(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / "standard.dsdb", error) || fs::exists(folder / "user.dsdb", error) ||
           fs::exists(folder / "addins", error);
}

} // namespace

fs::path locateDataFolder(const std::string& named) {
    if (!named.empty()) {
        std::error_code error; // the working folder may have been deleted
        const fs::path folder = fs::absolute(named, error);
        return (error ? fs::path(named) : folder).lexically_normal();
    }
    const auto place = QStandardPaths::GenericDataLocation;
    fs::path own = fs::path(QStandardPaths::writableLocation(place).toStdString()) / "detailstyles";
    std::error_code error;
    if (fs::is_directory(own, error))
        return own;
    for (const QString& found :
         QStandardPaths::locateAll(place, "detailstyles", QStandardPaths::LocateDirectory))
        if (fs::path folder = found.toStdString(); holdsDatabases(folder))
            return folder;
    return own;
}
