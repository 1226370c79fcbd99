#pragma once

#include "records/KorDSNDefinitions.h"
#include "records/KorOdbcKey.h"
#include "records/Referrer.h"

#include <vector>

/// Rows of the current source by their table type, for callers that treat tables alike. What is returned is
/// valid until the table changes. Without a current source there are no rows.
namespace CurrentRows {

/// The current source; its database need not be open.
SourceId source();
/// The row, or null.
const StructRecord* find(eTableType table, const KorOdbcKey& key);
/// The first row of this name, or null.
const StructRecord* find(eTableType table, const KorString& runName);
/// All rows, by key; null without a current source.
const RowArray* all(eTableType table);
/// The rows in the order in which lists show them, by name.
std::vector<const StructRecord*> byName(eTableType table);
/// The cells by which rows are parts of this row, in the order of table types and keys.
std::vector<Referrer> partsOf(eTableType table, const KorOdbcKey& key);

} // namespace CurrentRows
