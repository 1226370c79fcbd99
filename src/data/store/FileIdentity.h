#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

/// Which file a path names: two paths of one file are equal, and a file put in the place of another is not.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

// These look at a path by its directory entry only. Opening a database file by any means other than the
// database engine, and closing it again, would drop the locks that this process holds on it.

/// The database files that this process has open, one entry for each opening.
class OpenFiles {
public:
    static void add(const FileIdentity& file);
    static void remove(const FileIdentity& file);
    static bool contains(const FileIdentity& file);
};

/// The file that `path` names now, or none.
std::optional<FileIdentity> fileIdentity(const std::string& path);
/// What tells the file that `path` names now from one that is put in its place later, even where that gets
/// the inode of the old one; one word, empty when there is none.
std::string fileStamp(const std::string& path);
/// The absolute path without links: that of the file itself, beside which its journal stands.
std::string resolvedPath(const std::string& path);
/// Whether the file's name is one under which a database keeps what is being written.
bool isNeighbourName(const std::string& path);
