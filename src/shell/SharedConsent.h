#pragma once

#include "records/RowRef.h"

class QWidget;

/// The question before a shared record is changed, asked once while the user stays where it was answered: a
/// list is changed cell by cell.
namespace SharedConsent {

/// Asks in a dialog of the window, unless the user agreed to it in this visit already. Returns the answer as
/// the guarded write wants it.
int ask(RowRef shared, QWidget& window);
/// The user looks at this record now; another one than before is a new visit.
void visit(RowRef record);

} // namespace SharedConsent
