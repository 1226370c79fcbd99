#include "shell/DataFolderPlace.h"

#include <QStandardPaths>

namespace fs = std::filesystem;

fs::path locateDataFolder(const std::string& named) {
    if (!named.empty()) {
        std::error_code error; // the working folder may have been deleted
        const fs::path folder = fs::absolute(named, error);
        return (error ? fs::path(named) : folder).lexically_normal();
    }
    const auto place = QStandardPaths::GenericDataLocation;
    QString folder = QStandardPaths::locate(place, "detailstyles", QStandardPaths::LocateDirectory);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(place) + "/detailstyles";
    return fs::path(folder.toStdString());
}
