#pragma once

#include "data/store/SqliteStore.h"

/// The making of one new database file: under a name of its own beside the target, filled, checked, written
/// through to the disk, and only then put in the place of the target. Without `publish` nothing remains.
class SqliteCreation {
public:
    enum class eTarget { kMustBeNew, kMayExist };

    SqliteCreation(std::string target, eTarget rule);
    ~SqliteCreation();
    SqliteCreation(const SqliteCreation&) = delete;
    SqliteCreation& operator=(const SqliteCreation&) = delete;

    /// Makes the file with all tables and the rows that `fill` applies, in one transaction.
    StoreResult make(const std::function<StoreResult(StyleStore&)>& fill);
    /// Puts it in place.
    StoreResult publish();

private:
    StoreResult checkTarget() const;
    StoreResult makeEmptyFile();
    StoreResult makeTables(SqliteStore& store) const;
    StoreResult fault(eStoreFault kind, const std::string& detail = {}) const;

    std::string m_target;    ///< as sentences name it
    std::string m_path;      ///< where it is, links followed
    std::string m_temporary; ///< empty when there is none
    eTarget m_rule;
};
