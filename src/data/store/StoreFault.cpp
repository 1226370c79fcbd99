#include "data/store/StoreFault.h"

#include <sqlite3.h>

#include <cerrno>

namespace {

const char* pattern(eStoreFault fault) {
    switch (fault) {
    case eStoreFault::kMissing:
        return "The style database \"%s\" does not exist; check the data folder or restore the file.";
    case eStoreFault::kNoFile:
        return "\"%s\" is not a file; name a style database file instead.";
    case eStoreFault::kEmpty:
        return "The file \"%s\" is empty and no style database; restore it from a copy, or delete it to get "
               "a "
               "new one.";
    case eStoreFault::kNoDatabase:
        return "The file \"%s\" is not a database; choose a style database, or restore it from a copy.";
    case eStoreFault::kOtherApplication:
        return "The database \"%s\" belongs to another program; choose a style database.";
    case eStoreFault::kNewerVersion:
        return "The style database \"%s\" was written by a newer version of this program (%s); update the "
               "program to open it.";
    case eStoreFault::kUnknownVersion:
        return "The style database \"%s\" has an unknown version (%s); restore it from a copy.";
    case eStoreFault::kDamaged:
        return "The style database \"%s\" is damaged (%s); restore it from a copy.";
    case eStoreFault::kLocked:
        return "The style database \"%s\" is locked by another program; finish the work there and try again.";
    case eStoreFault::kUnreadable:
        return "The style database \"%s\" may not be read; ask for permission to read the file.";
    case eStoreFault::kReadOnly:
        return "The style database \"%s\" may not be written and is open for reading only; ask for "
               "permission "
               "to write the file.";
    case eStoreFault::kFolderMissing:
        return "The folder of \"%s\" does not exist; create it or choose another one.";
    case eStoreFault::kFolderReadOnly:
        return "The folder of \"%s\" cannot be written, so nothing can be changed there; ask for permission "
               "to "
               "write the folder or choose another one.";
    case eStoreFault::kDiskFull:
        return "The disk is full, nothing was written to \"%s\"; free some space and try again.";
    case eStoreFault::kWriteAheadLog:
        return "The style database \"%s\" was left in write-ahead mode by another program; set its journal "
               "mode "
               "to DELETE there, or restore it from a copy.";
    case eStoreFault::kInterruptedWrite:
        return "The style database \"%s\" holds a change that was interrupted; open it once with permission "
               "to "
               "write, so that the change is taken back.";
    case eStoreFault::kReplaced:
        return "The style database \"%s\" was replaced or removed by another program; read it again before "
               "you write.";
    case eStoreFault::kOpenHere:
        return "The style database \"%s\" is open in this program; choose another file name.";
    case eStoreFault::kExists:
        return "The file \"%s\" exists already; choose another file name.";
    case eStoreFault::kLeftover:
        return "Beside \"%s\" lies a file of an interrupted change (%s); choose another file name, or open "
               "the "
               "database once so that the change is taken back.";
    case eStoreFault::kNoTable:
        return "The style database \"%s\" has no table \"%s\", so nothing can be written there; restore it "
               "from a "
               "copy.";
    case eStoreFault::kNoColumn:
        return "The style database \"%s\" has no column \"%s\", so nothing can be written there; restore it "
               "from "
               "a copy.";
    case eStoreFault::kInputOutput:
        return "The style database \"%s\" could not be read or written (%s); check the disk or the network "
               "connection and try again.";
    case eStoreFault::kOther:
        break;
    }
    return "The style database \"%s\" cannot be used (%s); try again, or restore it from a copy.";
}

bool isDiskFull(int systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

} // namespace

std::string faultSentence(eStoreFault fault, const std::string& file, const std::string& detail) {
    return KorString::format(pattern(fault), {file, detail}).toStdString();
}

StoreResult faultResult(eStoreFault fault, const std::string& file, const std::string& detail) {
    return StoreResult::failure(faultSentence(fault, file, detail));
}

eStoreFault faultOfCode(int code, int systemError) {
    switch (code) {
    case SQLITE_READONLY_ROLLBACK:
    case SQLITE_READONLY_RECOVERY:
        return eStoreFault::kInterruptedWrite;
    case SQLITE_READONLY_DBMOVED:
        return eStoreFault::kReplaced;
    case SQLITE_READONLY_DIRECTORY:
        return eStoreFault::kFolderReadOnly;
    default:
        break;
    }
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return eStoreFault::kLocked;
    case SQLITE_READONLY:
        return eStoreFault::kReadOnly;
    case SQLITE_CANTOPEN: // the database itself is open by then: it is the journal that cannot be made
        return eStoreFault::kFolderReadOnly;
    case SQLITE_CORRUPT:
        return eStoreFault::kDamaged;
    case SQLITE_NOTADB:
        return eStoreFault::kNoDatabase;
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return eStoreFault::kUnreadable;
    case SQLITE_FULL:
        return eStoreFault::kDiskFull;
    case SQLITE_IOERR:
        return isDiskFull(systemError) ? eStoreFault::kDiskFull : eStoreFault::kInputOutput;
    default:
        return eStoreFault::kOther;
    }
}
