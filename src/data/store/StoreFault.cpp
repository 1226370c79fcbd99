#include "data/store/StoreFault.h"

#include "base/Translation.h"
#include "data/store/FileIdentity.h"
#include "data/store/LeftJournal.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

// %s is the file, a second %s the detail.
constexpr std::pair<eStoreFault, const char*> kPatterns[] = {
    {eStoreFault::kMissing,
     translatable("The style database \"%s\" does not exist; check the data folder or restore the file.")},
    {eStoreFault::kNoFile, translatable("\"%s\" is not a file; name a style database file instead.")},
    {eStoreFault::kEmpty,
     translatable("The file \"%s\" is empty and no style database; restore it from a copy.")},
    {eStoreFault::kNoDatabase,
     translatable("The file \"%s\" is not a database; choose a style database, or restore it from a copy.")},
    {eStoreFault::kOtherApplication,
     translatable("The database \"%s\" belongs to another program; choose a style database.")},
    {eStoreFault::kNewerVersion,
     translatable("The style database \"%s\" was made by a newer version of the program (%s); it can be "
                  "read, but not changed.")},
    {eStoreFault::kUnknownVersion,
     translatable("The style database \"%s\" has an unknown version (%s); restore it from a copy.")},
    {eStoreFault::kNotMigrated,
     translatable("The style database \"%s\" is of an earlier version and cannot be brought to the present "
                  "one (%s); restore it from a copy.")},
    {eStoreFault::kDamaged,
     translatable("The style database \"%s\" is damaged (%s); restore it from a copy.")},
    {eStoreFault::kLocked,
     translatable(
         "The style database \"%s\" is locked by another program; finish the work there and try again.")},
    {eStoreFault::kUnreadable,
     translatable("The style database \"%s\" may not be read; ask for permission to read the file.")},
    {eStoreFault::kTooManyFiles,
     translatable("The style database \"%s\" cannot be opened, because too many files are open; close "
                  "other programs and try again.")},
    {eStoreFault::kPathTooLong,
     translatable("The path \"%s\" is too long for a style database; choose a shorter one.")},
    {eStoreFault::kReadOnly,
     translatable("The style database \"%s\" may not be written and is open for reading only; ask "
                  "for permission to write the file.")},
    {eStoreFault::kFolderMissing,
     translatable("The folder of \"%s\" does not exist; create it or choose another one.")},
    {eStoreFault::kFolderReadOnly,
     translatable("The folder of \"%s\" cannot be written, so nothing can be changed there; "
                  "ask for permission to write the folder or choose another one.")},
    {eStoreFault::kDiskFull,
     translatable("The disk is full, nothing was written to \"%s\"; free some space and try again.")},
    {eStoreFault::kWriteAheadLog,
     translatable(
         "The style database \"%s\" was left in write-ahead mode by another program; set its journal mode to "
         "DELETE there, or restore it from a copy.")},
    {eStoreFault::kInterruptedWrite,
     translatable("The style database \"%s\" holds a change that was interrupted; open it "
                  "once with permission to write, so that the change is taken back.")},
    {eStoreFault::kReplaced, translatable("The style database \"%s\" was replaced or removed by another "
                                          "program; read it again before you write.")},
    {eStoreFault::kReplacedMeanwhile,
     translatable("The style database \"%s\" was replaced or removed by another program while the change was "
                  "being stored, so the change is not in it; read it again and repeat the change.")},
    {eStoreFault::kOpenHere,
     translatable("The style database \"%s\" is open in this program; choose another file name.")},
    {eStoreFault::kExists, translatable("The file \"%s\" exists already; choose another file name.")},
    {eStoreFault::kLeftover,
     translatable("Beside \"%s\" lies a file of an interrupted change (%s), which would change a new file; "
                  "move it away, or bring back the database that it belongs to and open it once.")},
    {eStoreFault::kOddNeighbour,
     translatable("Beside \"%s\" lies \"%s\", which is no ordinary file; move it away to open the style "
                  "database.")},
    {eStoreFault::kForeignJournal,
     translatable("Beside \"%s\" lies \"%s\", the journal of an interrupted change that does not fit this "
                  "state of the file; move the journal away to use the file as it is, or bring back the file "
                  "that the journal belongs to, or take the change back with the program that made it.")},
    {eStoreFault::kLeftLog,
     translatable(
         "Beside \"%s\" lies \"%s\", the log of a program in write-ahead mode, which may belong to "
         "another file; finish the work in that program, so that it removes the log, or move the log "
         "away to use the file as it is.")},
    {eStoreFault::kNeighbour,
     translatable("\"%s\" is a name under which a database keeps changes that are being written; choose "
                  "another file name.")},
    {eStoreFault::kComputed,
     translatable("The style database \"%s\" holds columns or indexes that are computed (%s), which is not "
                  "allowed; remove them with a database tool.")},
    {eStoreFault::kNoTable,
     translatable("The style database \"%s\" has no table \"%s\", so nothing can be written there; "
                  "restore it from a copy.")},
    {eStoreFault::kNoColumn,
     translatable("The style database \"%s\" has no column \"%s\", so nothing can be written "
                  "there; restore it from a copy.")},
    {eStoreFault::kInputOutput,
     translatable("The style database \"%s\" could not be read or written (%s); check the disk "
                  "or the network connection and try again.")},
    {eStoreFault::kOther,
     translatable("The style database \"%s\" cannot be used (%s); try again, or choose another file.")},
};

bool isDiskFull(int systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

} // namespace

std::string faultSentence(eStoreFault fault, const std::string& file, const std::string& detail) {
    const auto* found = std::ranges::find(kPatterns, fault, &std::pair<eStoreFault, const char*>::first);
    std::string sentence = KorString::format(translated(found->second), {file, detail}).toStdString();
    if (std::string_view(found->second).find("restore") == std::string_view::npos)
        return sentence;
    std::string advice;
    for (const char* suffix : {"-journal", "-wal"})
        if (const std::string left = resolvedPath(file) + suffix;
            fileIdentity(left) && !isBeingWritten(resolvedPath(file)))
            advice +=
                " " + KorString::format(translated("Move \"%s\" away before you put a copy there, since "
                                                   "it would change the copy."),
                                        {left})
                          .toStdString();
    return sentence + advice;
}

eStoreFault faultOfOpening(int systemError) {
    switch (systemError) {
    case EMFILE:
    case ENFILE:
        return eStoreFault::kTooManyFiles;
    case ENAMETOOLONG:
        return eStoreFault::kPathTooLong;
    case EIO:
        return eStoreFault::kInputOutput;
    default:
        return eStoreFault::kUnreadable;
    }
}

eStoreFault faultOfSystem(int systemError) {
    switch (systemError) {
    case EACCES:
    case EPERM:
    case EROFS:
        return eStoreFault::kFolderReadOnly;
    case ENOENT:
    case ENOTDIR:
        return eStoreFault::kFolderMissing;
    case EEXIST:
        return eStoreFault::kExists;
    default:
        return isDiskFull(systemError) ? eStoreFault::kDiskFull : eStoreFault::kInputOutput;
    }
}

Result<> faultResult(eStoreFault fault, const std::string& file, const std::string& detail) {
    return Result<>::failure(faultSentence(fault, file, detail));
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
        return systemError == EMFILE || systemError == ENFILE ? eStoreFault::kTooManyFiles
                                                              : eStoreFault::kFolderReadOnly;
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
