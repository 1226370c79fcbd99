#pragma once

#include "base/TemporaryFile.h"
#include "data/store/StoreFault.h"

struct sqlite3;

/// The copy of a database file that is kept beside it before it is brought to a later version: named after it
/// and its version, never in the place of another file.
class VersionBackup {
public:
    /// `path` is the file, `name` what sentences call it, `version` the one that it has.
    VersionBackup(const std::string& path, std::string name, int version);

    /// Copies the file, under a name of its own that goes with this object. The open transaction of `db` must
    /// keep other writers off, and must not have written anything itself yet.
    Result<> make(sqlite3* db);
    /// Gives the copy its name, through to the disk. Where the very same one lies there already, of an
    /// earlier try, that is the one.
    Result<> publish();

private:
    Result<> fault(int systemError) const;
    int copyFrom(sqlite3* db);
    bool isAt(const std::string& path) const;

    std::string m_path; ///< that of the backup, without a number
    std::string m_name;
    mode_t m_mode;
    TemporaryFile m_temporary;
};
