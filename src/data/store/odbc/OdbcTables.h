#pragma once

#include <cstdint>

/// The tables that a database on a server has beside those of the styles.
///
/// One row: what the database is, its version, and the number of the last change. Whoever changes something
/// raises that number first, which makes others wait until it is stored, so that the numbers are in the order
/// in which the changes were stored, without gaps.
inline constexpr const char* kStateTable = "dsdb_state";
/// A row for each commit: its number, its mark, who stored it and when.
inline constexpr const char* kCommitTable = "dsdb_commit";
/// A row for each row of a style table that a commit wrote, at least one for each commit. Of the oldest
/// commits the rows are removed after a while: whoever would need them reads everything.
inline constexpr const char* kChangeTable = "dsdb_change";
/// A row for each version that the schema had: when it came, and by whom.
inline constexpr const char* kVersionTable = "dsdb_version";

/// So many of the latest commits are known by their rows, more or less.
inline constexpr std::int64_t kKnownCommits = 20000;
/// How often the rows of older ones are removed.
inline constexpr std::int64_t kCommitsBetweenRemovals = 500;
/// The kind of a row, without a key, that stands for many of its table.
inline constexpr char kManyRows = 'm';
