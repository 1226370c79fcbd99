#pragma once

#include "records/RowRef.h"

#include <string>
#include <vector>

/// Somebody else who has a database on a server open.
struct Colleague {
    std::string user;
    std::vector<RowRef> pending; ///< some of the rows that are changed there and not stored yet

    bool operator==(const Colleague&) const = default;
};

/// What a server says of a database when it is looked at.
struct ServerNews {
    enum class eState {
        kSame,
        kChanged,  ///< others stored something
        kNoAnswer, ///< for a while
        kLost,     ///< the line broke, and a new one is tried
        kBack,     ///< there is a new line, by which the database can be read again
    };

    eState state = eState::kSame;
    std::vector<Colleague> colleagues = {}; ///< none where the engine cannot tell
};
