#pragma once

#include "records/KorOdbcKey.h"
#include "session/KorDSMWhereUsed.h"

/// A shared record of the current source, as the user is asked about it before it is changed.
struct KorDSMSharedRecord {
    KorString kind;       ///< what such records are called; "item" where they have no name
    KorString name;       ///< its run name; empty without such a record or kind
    KorString whole;      ///< as Appearance "Welds": what it is, and its name in full; empty if unknown
    bool isNamed = false; ///< whether `kind` and `name` say which one it is
    std::vector<KorDSMUsage> users; ///< whom a change reaches

    /// `table` 48 or an invalid key is a programming error and gives a nameless item.
    static KorDSMSharedRecord of(eTableType table, const KorOdbcKey& key);

    /// Whether the user wants to be asked. Switching it stores the option and tells the options menu.
    static bool warningIsOn();
    static void switchWarning(bool on);
};
