#pragma once

#include <functional>

/// Between the database engine and the disk: lets the n-th write, sync or deletion of a file, or the n-th
/// read, go wrong, or lets another program come in between two read transactions.
/// In effect as long as the object lives; one at a time.
class FaultVfs {
public:
    enum class eFault {
        kKill,      ///< the process dies, a write half done
        kDiskFull,  ///< from then on no file grows any more
        kReadError, ///< one read fails, the next one works again; only reads are counted
    };

    FaultVfs(int operation, eFault fault);
    /// Does `meanwhile` just before a database is locked for reading for the n-th time. It must use
    /// connections that were opened before.
    FaultVfs(int operation, std::function<void()> meanwhile);
    ~FaultVfs();
    /// Whether it went wrong, or `meanwhile` was done, already.
    static bool hasStruck();
};
