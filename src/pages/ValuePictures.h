#pragma once

#include "records/TableSchema.h"

#include <QIcon>
#include <QSize>

/// What values look like: pictures of what can be chosen, colours as swatches, line types, hatches, leaders
/// and appearances drawn as they come out. For lists, fields and cells of the current source. Which value has
/// which picture is declared here and nowhere else.
namespace ValuePictures {

/// The picture of a value of the column: of the row that a reference names its own. An empty icon where the
/// value has none.
QIcon of(const TableSchema& table, const Column& column, const CellValue& value);
/// The picture that stands for a row of the current source; an empty icon where it has none.
QIcon ofRow(const TableSchema& table, const StructRecord& row);
/// Whether users are offered the row where they choose one of its table: most pictures stand for values of
/// their own and for nothing else.
bool isOffered(eTableType table, const StructRecord& row);
/// How large the pictures of the column's values are, in pixels at 100 %; an empty size where they have none,
/// whatever the value.
QSize sizeFor(const TableSchema& table, const Column& column);
/// The room for the pictures of any column, as in the cells of a list.
QSize largestSize();

/// A number or text that is typed shows what comes of it in a small picture inside of its field: a line in
/// its weight, a hatch in its pattern. An empty icon where there is nothing to show.
QIcon inField(const TableSchema& table, const Column& column, const StructRecord& row);
/// Whether fields of the column show such pictures.
bool isShownInField(const TableSchema& table, const Column& column);

/// Number of the large picture that explains a value where it is chosen on a picture; 0 where there is none.
int explaining(const TableSchema& table, const Column& column, std::int32_t value);

/// Numbers of the declared pictures of the column, each with its value, for checks.
std::vector<std::pair<std::int32_t, int>> declared(const TableSchema& table, const Column& column);

} // namespace ValuePictures
