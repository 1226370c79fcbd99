#pragma once

#include <functional>
#include <string>

#include <sys/types.h>

/// The name of a temporary file beside `target`, with ".newPID-N-CHECK" behind it. The last part follows from
/// the others, so that no name that somebody else gives to a file is taken for one.
std::string temporaryName(const std::string& target, pid_t process, int number);

/// A new file beside `target`, to be put in its place when it is whole, or removed. It is locked as long as
/// it is open here, so that others see whether somebody is at work with it, be it on another machine. The
/// first byte is locked, which no database engine locks.
class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Makes the file, empty, with the permissions that `mode` and the process allow. Returns 0, or the
    /// errno.
    int create(const std::string& target, mode_t mode);
    /// Empty where there is none.
    const std::string& path() const { return m_path; }
    /// For reading and writing; owned by this.
    int handle() const { return m_handle; }
    /// Puts the file in the place of `target`, through to the disk. What is there is replaced only where
    /// `mayReplace`. Returns 0, or the errno, EEXIST where something is there; then the file is still
    /// temporary.
    int publish(const std::string& target, bool mayReplace);

private:
    void close();

    std::string m_path;
    int m_handle = -1;
};

/// Removes what programs that were killed left of such files in a folder: those whose process is gone, that
/// nobody holds locked, and of which `isOurs` says so, to be asked with the target's file name and a handle
/// for reading. What cannot be looked at stays.
void removeLeftTemporaryFiles(const std::string& folder,
                              const std::function<bool(const std::string& target, int handle)>& isOurs);
