#pragma once

#include "data/StyleDatabases.h"
#include "records/RowRef.h"

#include <optional>

/// A row that uses another one, as users know it: parts are named by their wholes.
struct RowUser {
    SourceId source;
    RowRef row;                               ///< in that source
    const TableSchema* table = nullptr;       ///< of the row
    KorString name;                           ///< of the row
    const Column* column = nullptr;           ///< with which the row or its part uses the other one
    const TableSchema* columnTable = nullptr; ///< of the column: that of the row or of its part
    int times = 1;                            ///< how many of its parts do so
};

/// Whether rows of this table can be used by others.
bool canBeUsed(eTableType table);

/// The whole that a row is part of, over any number of steps; the row itself when it is no part.
RowRef wholeOf(StyleSource& source, RowRef row);

/// The record whose users see a write to a row of the current source, when those are several: the row's
/// whole.
std::optional<RowRef> sharedWhole(StyleDatabases& databases, RowRef row);

/// Who uses a row of one source, or its whole, in that source: all that a change of it reaches. In the order
/// of tables, keys and columns; a whole that uses the row through several parts occurs once per column.
std::vector<RowUser> usersInItsSource(StyleDatabases& databases, SourceId id, RowRef row);

/// Who uses a row of one source, or its whole: in that source the users of the row itself, in all other open
/// sources the users of the row of the same table and run name. In the order of sources, tables, keys and
/// columns; a whole that uses the row through several parts occurs once per column.
std::vector<RowUser> usersInAllSources(StyleDatabases& databases, SourceId id, RowRef row);
