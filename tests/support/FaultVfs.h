#pragma once

/// Between the database engine and the disk: lets the n-th write, sync or deletion of a file, or the n-th
/// read, go wrong.
/// In effect as long as the object lives; one at a time.
class FaultVfs {
public:
    enum class eFault {
        kKill,      ///< the process dies, a write half done
        kDiskFull,  ///< from then on no file grows any more
        kReadError, ///< one read fails, the next one works again; only reads are counted
    };

    FaultVfs(int operation, eFault fault);
    ~FaultVfs();
    /// Whether it went wrong already.
    static bool hasStruck();
};
