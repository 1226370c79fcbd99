#include "data/store/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

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
