#include "session/KorDSMReadAhead.h"

#include "data/StyleDatabases.h"
#include "data/store/LockWait.h"

#include <algorithm>

bool KorDSMReadAhead::step() {
    if (LockWait::isWaiting())
        return false;
    StyleDatabases& databases = StyleDatabases::current();
    return std::ranges::any_of(databases.sources(),
                               [&](SourceId id) { return databases.source(id)->readAhead(); });
}
