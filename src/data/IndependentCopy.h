#pragma once

#include "data/StyleDatabases.h"
#include "records/RowRef.h"

#include <map>

/// Copies rows of the current source together with all that they use and users make, so that a change of the
/// copy reaches no other record. Vocabulary, groups and categories stay common. What is used twice is copied
/// once while the object lives.
class IndependentCopy {
public:
    explicit IndependentCopy(StyleDatabases& databases)
        : m_databases(databases), m_source(*databases.here()) {}

    /// Appends a copy of the row and its parts under `name`; what goes along gets free names. `key` becomes
    /// that of the copy. When a row is refused, what was appended by then stands: the caller takes it back.
    WriteResult copy(RowRef row, const KorString& name, std::int32_t& key);

private:
    WriteResult copyTargets(RowRef row, StructRecord& record);
    WriteResult append(RowRef row, StructRecord& record);

    StyleDatabases& m_databases;
    StyleSource& m_source;
    std::map<RowRef, std::int32_t> m_copies;
};
