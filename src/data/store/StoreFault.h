#pragma once

#include "data/store/StyleStore.h"

/// What can be wrong with a database file, as far as the user has to do something about it.
enum class eStoreFault {
    kMissing,
    kNoFile, ///< a folder, a device
    kEmpty,
    kNoDatabase,
    kOtherApplication,
    kNewerVersion,
    kUnknownVersion,
    kNotMigrated, ///< an earlier version, with content that the present one cannot be made of
    kDamaged,
    kLocked,
    kUnreadable,
    kTooManyFiles,
    kPathTooLong,
    kReadOnly,
    kFolderMissing,
    kFolderReadOnly,
    kDiskFull,
    kWriteAheadLog,     ///< another program left it in a mode in which reading needs files beside it
    kInterruptedWrite,  ///< a change that a killed program left unfinished must be taken back first
    kReplaced,          ///< the path names another file than the one that was opened, or none
    kReplacedMeanwhile, ///< the same, seen after a change was stored in the file that was opened
    kOpenHere,
    kExists,
    kLeftover,       ///< a journal of an earlier file of that name would be applied to the new one
    kOddNeighbour,   ///< a pipe, a device or a link where a journal would be
    kForeignJournal, ///< nothing proves that the journal beside the file is its own
    kLeftLog,        ///< a log of write-ahead mode lies beside the file
    kNeighbour,      ///< a name under which a database keeps its journal
    kComputed,       ///< it holds expressions, which may run without end
    kNoTable,
    kNoColumn,
    kInputOutput,
    kOther,
};

/// The sentence for the user. `detail` is what the database engine says, for the faults that show it. Where
/// it advises to restore the file and a journal lies beside it, a second sentence says what to do with that.
std::string faultSentence(eStoreFault fault, const std::string& file, const std::string& detail = {});

Result<> faultResult(eStoreFault fault, const std::string& file, const std::string& detail = {});

/// Why a file could not be opened; `systemError` is the errno that came with it, or 0.
eStoreFault faultOfOpening(int systemError);

/// What hindered making a file beside another one; `systemError` is the errno.
eStoreFault faultOfSystem(int systemError);

/// What an SQLite result code means; `systemError` is the errno that came with it, or 0.
eStoreFault faultOfCode(int code, int systemError);
