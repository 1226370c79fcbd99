#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <vector>

/// Whether rows of this table stand for others: they are parts of them or tell the host of them.
bool belongsToOthers(const TableSchema& table);

/// Whether rows of this table only say where another row is listed: a place that is needed by nobody else.
bool isListing(const TableSchema& table);

/// The parts of a row, in the order of their tables and keys.
std::vector<Referrer> partsOf(StyleSource& source, RowRef row);

/// Why no copy of the row can be appended with copies of its parts, in one sentence; empty when it can.
std::string whyNotCopied(StyleSource& source, RowRef row);

/// The existing rows that the cells of `row` refer to, whatever the role of the reference.
std::vector<RowRef> targetsOf(StyleSource& source, RowRef row);

/// The row with all that it needs in order to mean the same elsewhere: what it and its parts refer to, the
/// parts of all that, and the rows that tell the host of it. Each row once, `row` first; empty when there is
/// no such row.
std::vector<RowRef> closureOf(StyleSource& source, RowRef row);
/// The same for several rows.
std::vector<RowRef> closureOf(StyleSource& source, const std::vector<RowRef>& rows);

/// Whether rows of this table are looked up by name or value instead of being referred to: units, text sizes,
/// scales and creation defaults.
bool isLookedUp(const TableSchema& table);

/// Rows that are looked up by name or value instead of being referred to, such as units, text sizes and
/// creation defaults, with their closures. A database needs them all to be of use in the editor.
std::vector<RowRef> lookUpRows(StyleSource& source);
