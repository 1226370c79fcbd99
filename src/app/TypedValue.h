#pragma once

#include "records/RowRef.h"
#include "records/TableSchema.h"

#include <optional>

/// Values as they are typed for one cell of a row of the current source.
namespace TypedValue {

struct Typed {
    std::optional<CellValue> value;
    KorString error; ///< a sentence for the user when there is no value
};
/// Reads a text for a column of a row, which exists, and judges whether the cell can hold it. What is shown
/// for the stored value means that value, to its last digit and to the right one of two rows of one name.
Typed read(RowRef row, const Column& column, const KorString& text);

/// The column of this name among some; null, with a sentence for the user, when there is none.
const Column* findColumn(const TableSchema& table, const std::vector<const Column*>& columns,
                         const std::string& name, KorString& error);
/// All columns of a table.
std::vector<const Column*> columnsOf(const TableSchema& table);

/// Any scale can be drawn, but a slip of the finger looks like one: says so where the value is a scale that
/// is not offered.
void tellUnlistedScale(const Column& column, const CellValue& value);

} // namespace TypedValue
