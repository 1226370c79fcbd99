#pragma once

#include "session/KorDSMPartList.h"

/// Rows of lists on the system's clipboard: as they were when they were copied, for other lists of the same
/// kind, also in another source or another running editor; and as text for other programs, a line for each
/// row with tabs between its cells.
namespace PartClipboard {

void put(const KorDSMPartList& list, const KorDSMPartList::Keys& rows);
/// Whether rows for such a list are there.
bool holds(const KorDSMPartList& list);
/// The rows as `KorDSMPartList::paste` reads them; empty when there are none for such a list.
KorString take(const KorDSMPartList& list);

} // namespace PartClipboard
