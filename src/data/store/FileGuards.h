#pragma once

#include "data/store/SqliteDatabase.h"

/// What is looked at before a database file is trusted, since it and the files beside it may come from
/// anybody.

/// Refuses a file with another kind of thing beside it where a journal would be: a pipe would keep the
/// program waiting.
Result<> refuseOddNeighbours(const std::string& path, const std::string& name);
/// Refuses a file beside which lies a journal of which nothing proves that it is the file's own, or a log of
/// write-ahead mode, which nothing binds to a file: what they hold would ruin another file. Must be called
/// before anything is read through the connection, in each transaction.
Result<> refuseLeftChanges(const SqliteDatabase& database, const std::string& path);
/// Refuses columns and indexes that are computed by expressions, which may run without end when a row is
/// written or checked.
Result<> refuseExpressions(const SqliteDatabase& database);

/// The findings of the database engine about the file's structure, at most `most`; with `indexes` about what
/// they hold too. A large file is looked at table by table, so that no lock is held for long. What could not
/// be read is a failure, not a finding.
Result<> findDamage(const SqliteDatabase& database, bool indexes, int most,
                    std::vector<std::string>& findings);
