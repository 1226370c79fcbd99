#pragma once

#include "base/Result.h"
#include "data/StyleDatabases.h"

/// How sources are named on the command line: `standard`, `user`, and add-ins by their folder or by the name
/// that they show, whatever the case.
namespace SourceChoice {

/// The name of a source: "standard", "user", or the add-in's folder.
KorString nameOf(SourceId id);

/// The name of a source that has no usable database and is searched before `found` where the user names none
/// (the User database, Standard, then the add-ins); empty when there is none.
KorString missingBefore(SourceId found);

/// The names of all sources that have no usable database, with commas; empty when there is none.
KorString missing();

/// The open source of this name; without a name all open ones in the order Standard, add-ins, User.
Result<std::vector<SourceId>> choose(const std::string& name);

} // namespace SourceChoice
