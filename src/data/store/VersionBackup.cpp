#include "data/store/VersionBackup.h"

#include "data/store/DatabaseFile.h"
#include "data/store/FileIdentity.h"
#include "data/store/LeftDatabases.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

using Block = std::array<unsigned char, 65536>;

std::string backupPath(const std::string& path, int version) {
    const fs::path file(resolvedPath(path));
    return file.parent_path() /
           (file.stem().string() + ".v" + std::to_string(version) + "-backup" + file.extension().string());
}

std::string numbered(const std::string& path, int number) {
    const fs::path file(path);
    return number == 1 ? path
                       : (file.parent_path() /
                          (file.stem().string() + "-" + std::to_string(number) + file.extension().string()))
                             .string();
}

// Nobody may read the backup who may not read the file.
mode_t modeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0600;
}

// Returns the errno, or 0.
int writeAll(int handle, std::span<const unsigned char> bytes, std::uint64_t offset) {
    while (!bytes.empty()) {
        const ssize_t count = pwrite(handle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? errno : EIO;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        offset += static_cast<std::uint64_t>(count);
    }
    return 0;
}

bool areEqual(int a, int b) {
    Block ofA;
    Block ofB;
    for (off_t offset = 0;; offset += static_cast<off_t>(ofA.size())) {
        const ssize_t countA = pread(a, ofA.data(), ofA.size(), offset);
        const ssize_t countB = pread(b, ofB.data(), ofB.size(), offset);
        if (countA < 0 || countA != countB ||
            std::memcmp(ofA.data(), ofB.data(), static_cast<std::size_t>(countA)) != 0)
            return false;
        if (countA < static_cast<ssize_t>(ofA.size()))
            return true;
    }
}

} // namespace

VersionBackup::VersionBackup(const std::string& path, std::string name, int version)
    : m_path(backupPath(path, version)), m_name(std::move(name)), m_mode(modeOf(path)) {}

Result<> VersionBackup::fault(int systemError) const {
    return faultResult(faultOfSystem(systemError), m_name, std::strerror(systemError));
}

Result<> VersionBackup::make(sqlite3* db) {
    removeLeftDatabases(fs::path(m_path).parent_path());
    int error = m_temporary.create(m_path, m_mode);
    if (!error)
        error = copyFrom(db);
    return error ? fault(error) : Result<>();
}

// Returns the errno, or 0.
int VersionBackup::copyFrom(sqlite3* db) {
    const DatabaseFile file(db);
    const auto size = file.size();
    if (!size)
        return EIO;
    Block block;
    for (std::uint64_t offset = 0; offset < *size; offset += block.size()) {
        const std::span<unsigned char> bytes(block.data(),
                                             std::min<std::uint64_t>(block.size(), *size - offset));
        if (file.read(offset, bytes) != SQLITE_OK)
            return EIO;
        if (const int error = writeAll(m_temporary.handle(), bytes, offset))
            return error;
    }
    return 0;
}

// A file that is open here is not looked into, since that would drop its locks.
bool VersionBackup::isAt(const std::string& path) const {
    const auto identity = fileIdentity(path);
    if (!identity || OpenFiles::contains(*identity))
        return false;
    const int handle = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool isEqual = areEqual(handle, m_temporary.handle());
    close(handle);
    return isEqual;
}

Result<> VersionBackup::publish() {
    constexpr int kMostNames = 1000;
    for (int number = 1; number <= kMostNames; ++number) {
        const std::string path = numbered(m_path, number);
        if (isAt(path))
            return {};
        const int error = m_temporary.publish(path, false);
        if (error != EEXIST)
            return error ? fault(error) : Result<>();
    }
    return fault(EEXIST);
}
