#pragma once

#include "base/Result.h"
#include "records/TableSchema.h"

class StyleTable;

/// Cells as users read and type them: lengths in the unit of the current database, scales by name or as
/// ratio, references by run name, flags as yes and no, named values by their names.
namespace KorDSMValueText {

/// A record's name as menus, messages and titles show it: on one line, and cut where it is longer than 60
/// characters, lest a window become larger than the screen.
KorString shortName(const KorString& name);
/// Whether somebody gave a row of the table this name: false for none, and for that of its kind, with a
/// number or without.
bool isNameGiven(const TableSchema& table, const KorString& name);
/// What a table's rows are called, in the program's language, with a capital.
KorString tableCaption(const TableSchema& table);
/// What a column is called, in the program's language, with a capital.
KorString columnCaption(const TableSchema& table, const Column& column);

/// The same with the unit of lengths where the current database's units don't print it with the number.
KorString captionWithUnit(const TableSchema& table, const Column& column);
/// A caption of a length with the unit, before the colon where it ends in one; unchanged where the current
/// database's units print the unit with the number.
KorString withLengthUnit(const KorString& caption);
/// The values that users choose from, in the order offered; empty for a column whose values have no names.
std::vector<std::int32_t> valuesOf(const Column& column);
/// What these values are called, in the same order.
std::vector<KorString> valueNames(const TableSchema& table, const Column& column);
/// What a number is called that is no amount, such as -1 for the default; an empty text for any other value.
KorString specialName(const TableSchema& table, const Column& column, const CellValue& value);
/// What a reference to no row is called.
KorString nothing();
/// The unit kind of the column's numbers for the units manager.
int unitKind(const Column& column);

/// The row that a text names: by its run name, as `OwnWords` calls it, or by its key in brackets, such
/// as "[7]". Null when there is
/// none.
const StructRecord* findRow(const StyleTable& rows, const KorString& text);
/// The keys of all rows that a text names in this way: several where they share a run name.
std::vector<std::int32_t> keysNamed(const StyleTable& rows, const KorString& text);

/// The cell as a user reads it. A reference that points nowhere, or to a row without a name, shows its key
/// in brackets.
KorString toText(const TableSchema& table, const Column& column, const StructRecord& record);
/// The same for a single value.
KorString toText(const TableSchema& table, const Column& column, const CellValue& value);
/// A scale by its name, or as a ratio where it has none.
KorString scaleText(double factor);
/// Whether the scale is one of those that lists offer; true in a source that offers none.
bool isOfferedScale(double factor);

/// What came of reading a typed text.
struct Parsed : Result<CellValue> {
    using Result::Result;

    KorString note = {}; ///< of a failure: the same in a word, for beside the field where a number was typed
};
/// Reads what a user typed, or what `toText` gave. References are looked up in the current source.
Parsed parse(const TableSchema& table, const Column& column, const KorString& text);

} // namespace KorDSMValueText
