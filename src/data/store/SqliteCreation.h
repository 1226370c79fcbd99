#pragma once

#include "base/TemporaryFile.h"
#include "data/store/SqliteStore.h"

/// The making of one new database file: under a name of its own beside the target, filled, checked, written
/// through to the disk, and only then put in the place of the target. Without `publish` nothing remains.
class SqliteCreation {
public:
    enum class eTarget { kMustBeNew, kMayExist };

    SqliteCreation(std::string target, eTarget rule, const SchemaHistory& history = SchemaHistory::own());

    /// Makes the file with all tables and the rows that `fill` applies, in one transaction. Leftovers in its
    /// folder are removed first.
    Result<> make(const std::function<Result<>(StyleStore&)>& fill);
    /// Puts it in place.
    Result<> publish();

private:
    Result<> checkTarget() const;
    Result<> makeTables(SqliteStore& store) const;
    Result<> fault(eStoreFault kind, const std::string& detail = {}) const;

    std::string m_target; ///< as sentences name it
    std::string m_path;   ///< where it is, links followed
    TemporaryFile m_temporary;
    eTarget m_rule;
    const SchemaHistory& m_history;
};
