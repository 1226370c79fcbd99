#pragma once

#include "base/KorString.h"
#include "records/KorOdbcKey.h"

#include <cstdint>

/// What every record has: its key in its table and source, and its run name, the name shown to the user.
/// Records are plain data, copied by value. Their member initialisers are the one place where defaults
/// stand: new rows, missing cells and the column defaults of new databases are taken from them.
struct StructRecord {
    std::int32_t key = 0; ///< 0 or below: no row
    KorString name;

    std::int32_t getKey() const { return key; }
    const KorString& getRunBezeichnung() const { return name; }
    void setRunBezeichnung(const KorString& runName) { name = runName; }

    bool operator==(const StructRecord&) const = default;
};
