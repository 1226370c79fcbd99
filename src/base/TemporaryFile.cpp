#include "base/TemporaryFile.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* kMark = ".new";

bool lock(int handle) {
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_len = 1;
    return fcntl(handle, F_OFD_SETLK, &range) == 0;
}

bool isNamed(int handle, const std::string& path) {
    struct stat opened {};
    struct stat named {};
    return fstat(handle, &opened) == 0 && lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

// Reads what `temporaryName` writes.
bool readName(const std::string& name, std::string& target, pid_t& process) {
    const auto mark = name.rfind(kMark);
    if (mark == std::string::npos || mark == 0)
        return false;
    target = name.substr(0, mark);
    const char* const end = name.data() + name.size();
    int number = 0;
    const auto [dash, fault] = std::from_chars(name.data() + mark + 4, end, process);
    if (fault != std::errc() || process <= 0 || dash == end || *dash != '-')
        return false;
    const auto [rest, numberFault] = std::from_chars(dash + 1, end, number);
    return numberFault == std::errc() && number >= 0 && rest != end &&
           temporaryName(target, process, number) == name;
}

bool isGone(pid_t process) {
    return kill(process, 0) != 0 && errno == ESRCH;
}

// Without this a power cut can bring the old name back.
void syncFolder(const std::string& path) {
    const int handle = open(path.c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return;
    fsync(handle);
    close(handle);
}

// These return the errno, or 0.
int renameTo(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

int renameToNew(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) // else a file system that cannot refuse to replace
        return errno;
    if (link(from.c_str(), to.c_str()) != 0)
        return errno;
    unlink(from.c_str());
    return 0;
}

} // namespace

std::string temporaryName(const std::string& target, pid_t process, int number) {
    constexpr std::uint64_t kStart = 14695981039346656037U;
    constexpr std::uint64_t kFactor = 1099511628211U;
    const std::string marked = target + kMark + std::to_string(process) + "-" + std::to_string(number);
    std::uint64_t check = kStart;
    for (const char c : std::filesystem::path(marked).filename().string())
        check = (check ^ static_cast<unsigned char>(c)) * kFactor;
    return marked + "-" + std::to_string(check);
}

TemporaryFile::~TemporaryFile() {
    if (!m_path.empty())
        unlink(m_path.c_str());
    close();
}

void TemporaryFile::close() {
    m_path.clear();
    if (m_handle >= 0)
        ::close(m_handle);
    m_handle = -1;
}

int TemporaryFile::publish(const std::string& target, bool mayReplace) {
    if (fsync(m_handle) != 0)
        return errno;
    const int failed = mayReplace ? renameTo(m_path, target) : renameToNew(m_path, target);
    if (failed)
        return failed;
    close();
    syncFolder(std::filesystem::path(target).parent_path());
    return 0;
}

int TemporaryFile::create(const std::string& target, mode_t mode) {
    constexpr int kAttempts = 1000;
    for (int i = 0; i < kAttempts; ++i) {
        const std::string path = temporaryName(target, getpid(), i);
        const int handle = open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, mode);
        if (handle < 0 && errno == EEXIST)
            continue;
        if (handle < 0)
            return errno;
        lock(handle); // where that cannot be done nobody can find out either, and the file is left alone
        if (!isNamed(handle, path)) { // somebody took it for a left one before it was locked
            ::close(handle);
            continue;
        }
        m_path = path;
        m_handle = handle;
        return 0;
    }
    return EEXIST;
}

void removeLeftTemporaryFiles(const std::string& folder,
                              const std::function<bool(const std::string& target, int handle)>& isOurs) {
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
         it.increment(error)) {
        std::string target;
        pid_t process = 0;
        std::error_code unknown;
        if (!readName(it->path().filename().string(), target, process) || !isGone(process) ||
            it->symlink_status(unknown).type() != std::filesystem::file_type::regular)
            continue;
        const std::string path = it->path().string();
        const int handle = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (handle < 0)
            continue;
        if (lock(handle) && isNamed(handle, path) && isOurs(target, handle))
            unlink(path.c_str());
        close(handle);
    }
}
