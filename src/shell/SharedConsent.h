#pragma once

#include "base/KorString.h"
#include "records/RowRef.h"

#include <functional>

class QWidget;

/// The question before a shared record is changed, asked once while the user stays where it was answered: a
/// list is changed cell by cell.
namespace SharedConsent {

/// Asks in a dialog of the window, unless the user agreed to it in this visit already. Returns the answer as
/// the guarded write wants it.
int ask(RowRef shared, QWidget& window);
/// A third answer: a copy of the record for what the user looks at, and nobody else.
struct CopyOffer {
    std::function<KorString(RowRef shared)> user; ///< whose copy that would be; empty where there is none
    std::function<void(RowRef shared)> make;
};
/// What is offered in the window's question, until it is given none.
void offerCopy(QWidget& window, CopyOffer offer);
/// The user looks at this record now; another one than before is a new visit.
void visit(RowRef record);

} // namespace SharedConsent
