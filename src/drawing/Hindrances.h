#pragma once

#include "picture/Primitive.h"
#include "records/TableDeclarations.h"

class StyleSource;

/// Why a cell governs nothing of a drawing, where other values or the sample part keep it from that. What is
/// said is declared per table and column.
namespace Hindrances {

/// What a cell meets.
struct Circumstances {
    const StructRecord& record; ///< that the cell is in
    StyleSource& source;
    const StructDetailStyle& style; ///< that is drawn
    const Drawing& drawing;
};

/// What sentences name.
struct Names {
    KorString kind; ///< of the record
    KorString record;
    KorString part;
};

/// The value that keeps the column from acting: one sentence for the user. Empty where none does.
KorString of(eTableType table, const Column& column, const Circumstances& circumstances);
/// Of a record that acts in the drawing: what the part lacks for the column to show.
KorString ofField(eTableType table, const Column& column, const Names& names);
/// Whether records of the table have a say in what is measured.
bool isOfDimensions(eTableType table);
/// Of such a record that does not act in the drawing, where what it measures is measured already.
KorString ofRepeated(const Names& names);
/// Of a record that does not act in the drawing: what it finds nothing of in the part.
KorString ofRecord(eTableType table, const Names& names);

} // namespace Hindrances
