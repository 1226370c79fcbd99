#pragma once

#include "session/KorDSMEditedList.h"

class KorDSMCopiedRows;

/// Rows of lists on the system's clipboard: as they were when they were copied, for other lists of the same
/// kind, also in another source or another running editor; and as text for other programs, a line for each
/// row with tabs between its cells.
namespace PartClipboard {

/// From now on remembers what comes onto the clipboard: it can be pasted when the program is gone that copied
/// it, and the clipboard is empty.
void watch();
/// Returns why that cannot be done, in one sentence; empty when it was.
KorString put(const KorDSMEditedList& list, const KorDSMEditedList::Keys& rows);
/// Whether rows for such a list are there.
bool holds(const KorDSMEditedList& list);
/// The rows; null when there are none for such a list.
std::unique_ptr<KorDSMCopiedRows> take(const KorDSMEditedList& list);

} // namespace PartClipboard
