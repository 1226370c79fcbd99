#include "data/store/FileFaults.h"

#include "data/store/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace {

constexpr off_t kSmallestDatabase = 512;  // one page
constexpr std::size_t kLongestPath = 500; // what the database engine takes, with a journal's suffix

bool mayAccess(const std::string& path, int mode) {
    return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

} // namespace

std::optional<eStoreFault> faultOfReading(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return errno == EACCES         ? eStoreFault::kUnreadable
               : errno == ENAMETOOLONG ? eStoreFault::kPathTooLong
                                       : eStoreFault::kMissing;
    if (!S_ISREG(status.st_mode))
        return eStoreFault::kNoFile;
    if (!mayAccess(path, R_OK))
        return eStoreFault::kUnreadable;
    if (status.st_size == 0)
        return eStoreFault::kEmpty;
    if (status.st_size < kSmallestDatabase)
        return eStoreFault::kNoDatabase;
    if (resolvedPath(path).size() > kLongestPath)
        return eStoreFault::kPathTooLong;
    return std::nullopt;
}

std::optional<eStoreFault> faultOfWriting(const std::string& path) {
    if (!mayAccess(path, W_OK))
        return eStoreFault::kReadOnly;
    return faultOfFolder(path);
}

std::optional<eStoreFault> faultOfFolder(const std::string& path) {
    const std::string folder = std::filesystem::path(resolvedPath(path)).parent_path();
    if (resolvedPath(path).size() > kLongestPath)
        return eStoreFault::kPathTooLong;
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return eStoreFault::kFolderMissing;
    if (!mayAccess(folder, W_OK | X_OK))
        return eStoreFault::kFolderReadOnly;
    return std::nullopt;
}
