#pragma once

#include "records/RowArray.h"
#include "records/TableSchema.h"

/// The words that every database has to choose from, such as choices of a view. They are stored in English,
/// so that databases of all languages match, and shown in the program's language. One that got another
/// name is shown by that, as long as the program has no word for it.
namespace OwnWords {

/// Whether the rows of the table are such words.
bool areIn(eTableType table);
/// What the record is called on the screen: its name, or what the word is in the program's language.
KorString nameOf(eTableType table, const StructRecord& record);
KorString nameOf(eTableType table, const KorString& name);
/// The first row of a table that is called so on the screen, or null.
const StructRecord* find(eTableType table, const RowArray& rows, const KorString& text);

} // namespace OwnWords
