#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct sqlite3;

// Every change that this program stores leaves a mark in the first page of the file, in the number by which
// readers notice another schema: the random number of the journal that was written with the change. So a left
// journal can be told from one that was left by a change to another copy of the same file.

/// What lies beside a database as its rollback journal.
enum class eLeftJournal {
    kNone,          ///< none, none that would be taken back, or a program is at work with it
    kOfThisFile,    ///< taking it back brings the file to where it was
    kOfAnotherFile, ///< nothing proves that it belongs to this file as it is now
    kUnreadable,    ///< it or the file could not be read
};

/// Looks at the journal `journal` and at the database that is open in `db`, by the connection's own file
/// handle; the connection is left as it is.
eLeftJournal judgeLeftJournal(const std::string& journal, sqlite3* db);

/// Whether some connection, of this process or another one, is changing the database file `path` (absolute).
/// False where it cannot be opened.
bool isBeingWritten(const std::string& path);

/// Marks the change of the open transaction; nothing where nothing was changed. Returns an SQLite result
/// code.
int markChange(sqlite3* db);
