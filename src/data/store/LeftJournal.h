#pragma once

#include <string>

struct sqlite3;

/// Whether the rollback journal `journal` is that of a change to another file than the one that is open in
/// `db`: one that was put in its place later. False where there is no journal, none that would be taken back,
/// or a program is at work with it. Reads the database by the connection's own file handle and leaves the
/// connection as it is.
bool isJournalOfAnotherFile(const std::string& journal, sqlite3* db);
