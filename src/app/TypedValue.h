#pragma once

#include "base/Result.h"
#include "records/RowRef.h"
#include "records/TableSchema.h"

/// Values as they are typed for one cell of a row of the current source.
namespace TypedValue {

/// Reads a text for a column of a row, which exists, and judges whether the cell can hold it. What is shown
/// for the stored value means that value, to its last digit and to the right one of two rows of one name.
Result<CellValue> read(RowRef row, const Column& column, const KorString& text);

/// The column of this name among some.
Result<const Column*> findColumn(const TableSchema& table, const std::vector<const Column*>& columns,
                                 const std::string& name);
/// What to say where a column is given more than one value.
KorString givenTwice(const Column& column);
/// All columns of a table.
std::vector<const Column*> columnsOf(const TableSchema& table);

/// Any scale can be drawn, and texts in braces may be meant, but a slip of the finger looks like one: says so
/// where the value is a scale that is not offered, or a label that is drawn otherwise than it seems.
void tellDoubts(const TableSchema& table, const Column& column, const CellValue& value);

} // namespace TypedValue
