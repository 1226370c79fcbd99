#pragma once

/// Between the database engine and the disk: lets the n-th write, sync or deletion of a file go wrong.
/// In effect as long as the object lives; one at a time.
class FaultVfs {
public:
    enum class eFault {
        kKill,     ///< the process dies, a write half done
        kDiskFull, ///< from then on no file grows any more
    };

    FaultVfs(int operation, eFault fault);
    ~FaultVfs();
};
