#pragma once

#include "base/Result.h"
#include "data/store/odbc/OdbcError.h"

/// What can be wrong with the styles of a database that answers.
enum class eServerFault {
    kNoStyles,
    kExists,
    kLongName,     ///< of the schema
    kRolesTaken,   ///< by a schema of the same name in another database of the server
    kOtherContent, ///< tables of these names, but not those of styles
    kOlder,
    kNewer,
    kAltersText, ///< the driver does not hand on texts as they are
    kReadOnly,
    kMayNotChange, ///< what only a maintainer may
    kUnknownOutcome,
    kWaitsForOutcome, ///< nothing may be stored before that is known
    kRowsMoved,       ///< somebody without this program's manners changed rows meanwhile
};

/// The sentence for the user; `name` is that of the database.
Result<> serverFault(eServerFault fault, const std::string& name, const std::string& detail = {});
/// The same of what a driver said.
Result<> serverFault(const OdbcError& error, const std::string& name);
