#include "support/FaultVfs.h"

#include <sqlite3.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace {

sqlite3_vfs g_vfs;
// The methods of journals and of databases: only the latter lock.
sqlite3_io_methods g_faulty[2];
const sqlite3_io_methods* g_realMethods[2];
sqlite3_vfs* g_realVfs = nullptr;
FaultVfs::eFault g_fault;
int g_at = 0;
int g_count = 0;
std::function<void()> g_meanwhile;

const sqlite3_io_methods& real(const sqlite3_file* file) {
    return *g_realMethods[file->pMethods == &g_faulty[1]];
}

bool isDue() {
    if (g_fault == FaultVfs::eFault::kReadError)
        return false;
    ++g_count;
    return g_fault == FaultVfs::eFault::kKill ? g_count == g_at : g_count >= g_at;
}

int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    sqlite3_int64 length = 0;
    real(file).xFileSize(file, &length);
    if (isDue()) {
        if (g_fault == FaultVfs::eFault::kKill) {
            real(file).xWrite(file, data, size / 2, offset);
            raise(SIGKILL);
        }
        if (offset + size > length)
            return SQLITE_FULL;
    }
    return real(file).xWrite(file, data, size, offset);
}

int read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    if (g_fault == FaultVfs::eFault::kReadError && !g_meanwhile && ++g_count == g_at)
        return SQLITE_IOERR_CORRUPTFS; // as of a device
    return real(file).xRead(file, data, size, offset);
}

int control(sqlite3_file* file, int operation, void* argument) {
    const int code = real(file).xFileControl(file, operation, argument);
    if (operation == SQLITE_FCNTL_LAST_ERRNO && g_fault == FaultVfs::eFault::kReadError && !g_meanwhile &&
        g_count >= g_at)
        *static_cast<int*>(argument) = EIO;
    return code;
}

int lock(sqlite3_file* file, int level) {
    if (g_meanwhile && level == SQLITE_LOCK_SHARED && ++g_count == g_at)
        g_meanwhile();
    return real(file).xLock(file, level);
}

int sync(sqlite3_file* file, int flags) {
    if (isDue() && g_fault == FaultVfs::eFault::kKill)
        raise(SIGKILL);
    return real(file).xSync(file, flags);
}

// Deleting the journal is what makes a change last: the process dies right after it.
int remove(sqlite3_vfs*, const char* name, int syncFolder) {
    const int code = g_realVfs->xDelete(g_realVfs, name, syncFolder);
    if (isDue() && g_fault == FaultVfs::eFault::kKill)
        raise(SIGKILL);
    return code;
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int code = g_realVfs->xOpen(g_realVfs, name, file, flags, outFlags);
    if (code == SQLITE_OK && file->pMethods) {
        const int kind = (flags & SQLITE_OPEN_MAIN_DB) != 0;
        g_realMethods[kind] = file->pMethods;
        g_faulty[kind] = *file->pMethods;
        g_faulty[kind].xWrite = write;
        g_faulty[kind].xSync = sync;
        g_faulty[kind].xRead = read;
        g_faulty[kind].xFileControl = control;
        if (kind == 1)
            g_faulty[kind].xLock = lock;
        file->pMethods = &g_faulty[kind];
    }
    return code;
}

} // namespace

FaultVfs::FaultVfs(int operation, eFault fault) {
    g_realVfs = sqlite3_vfs_find("unix");
    g_vfs = *g_realVfs;
    g_vfs.zName = "faults";
    g_vfs.xOpen = open;
    g_vfs.xDelete = remove;
    g_at = operation;
    g_fault = fault;
    g_count = 0;
    sqlite3_vfs_register(&g_vfs, 1);
}

FaultVfs::FaultVfs(int operation, std::function<void()> meanwhile) : FaultVfs(operation, eFault::kReadError) {
    g_meanwhile = std::move(meanwhile);
}

FaultVfs::~FaultVfs() {
    g_meanwhile = {};
    sqlite3_vfs_unregister(&g_vfs);
    sqlite3_vfs_register(g_realVfs, 1);
}

bool FaultVfs::hasStruck() {
    return g_count >= g_at;
}
