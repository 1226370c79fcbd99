#pragma once

#include "records/TableSchema.h"

class StyleTable;

/// The words that every database has to choose from, such as choices of a view. They are stored in English,
/// so that databases of all languages match, and shown in the program's language. Who gave one another name
/// sees that one.
namespace KorDSMOwnWords {

/// Whether the rows of the table are such words.
bool areIn(eTableType table);
/// What the record is called on the screen: its name, or what the word is in the program's language.
KorString nameOf(eTableType table, const StructRecord& record);
KorString nameOf(eTableType table, const KorString& name);
/// The first row of a table that is called so on the screen, or null.
const StructRecord* find(const StyleTable& rows, const KorString& text);

} // namespace KorDSMOwnWords
