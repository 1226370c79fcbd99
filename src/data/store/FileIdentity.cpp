#include "data/store/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <vector>

namespace {

constexpr off_t kSmallestDatabase = 512;  // one page
constexpr std::size_t kLongestPath = 500; // what the database engine takes, with a journal's suffix

bool mayAccess(const std::string& path, int mode) {
    return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

std::vector<FileIdentity>& openFiles() {
    // Never destroyed: the process-wide databases close their files when the program has ended.
    static auto& files = *new std::vector<FileIdentity>;
    return files;
}

} // namespace

void OpenFiles::add(const FileIdentity& file) {
    openFiles().push_back(file);
}

void OpenFiles::remove(const FileIdentity& file) {
    auto& files = openFiles();
    if (const auto it = std::ranges::find(files, file); it != files.end())
        files.erase(it);
}

bool OpenFiles::contains(const FileIdentity& file) {
    return std::ranges::find(openFiles(), file) != openFiles().end();
}

std::optional<FileIdentity> fileIdentity(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

std::string fileStamp(const std::string& path) {
    struct statx status {};
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_INO | STATX_BTIME, &status) != 0)
        return {};
    std::string stamp = std::to_string(status.stx_ino);
    if (status.stx_mask & STATX_BTIME)
        stamp +=
            "-" + std::to_string(status.stx_btime.tv_sec) + "-" + std::to_string(status.stx_btime.tv_nsec);
    return stamp;
}

std::string resolvedPath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path resolved =
        std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    return error ? path : resolved.string();
}

bool isNeighbourName(const std::string& path) {
    constexpr std::string_view kSuffixes[] = {"-journal", "-wal", "-shm"};
    return std::ranges::any_of(kSuffixes, [&](std::string_view suffix) { return path.ends_with(suffix); });
}

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
