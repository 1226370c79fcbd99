#pragma once

#include "base/KorString.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

/// Databases on servers, as a window has to do with them: it looks at them now and then, and never waits for
/// one by that.
namespace KorDSMServers {

/// Whether a source is on one.
bool areThere();
/// Looks at them. Returns whether others stored something that `KorDSMCommit::readNoticed` can read.
bool look();

/// One sentence for each server that gives no answer, and since when; empty where all do.
KorString trouble();
/// As "Also here: anna, bert (User)": who else has sources open; empty for nobody.
KorString colleagues();
/// As "Being changed by anna": who has changes of the record or its parts that are not stored yet, as far as
/// the servers tell; empty for nobody.
KorString editorsOf(SourceId source, RowRef row);

} // namespace KorDSMServers
