#pragma once

#include <QString>

class QWidget;

/// A word below a control: that what it shows is not stored, or why it cannot be. Screen readers hear it as
/// the control's description.
namespace KorFieldNote {

/// Gives the control a place for its note. Once, before the control is shown: it moves into a box of its own
/// in its layout. A control outside any layout gets no place, and its notes are heard only.
void prepare(QWidget* control);

/// Shows the text; an empty one takes the note away.
void show(QWidget* control, const QString& text);
/// What is shown for the control now.
QString textOf(const QWidget* control);

/// The first control below `root`, in the order in which they were made, that has a note; null for none.
QWidget* first(const QWidget* root);

/// Takes away all notes below `root`.
void clear(QWidget* root);

} // namespace KorFieldNote
