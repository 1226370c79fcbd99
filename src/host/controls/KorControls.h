#pragma once

#include <QWidget>

#include <span>
#include <vector>

class QAbstractButton;

/// Access to the controls of a dialog or page by their numbers. A control carries its number as the dynamic
/// property `controlId`, set in the form. Numbers are unique within one form only: nothing here looks into
/// a window or form that lies inside the root (a page inside a dialog).
namespace KorControls {

/// The number of a control, 0 when it has none.
int id(const QWidget* control);
void setId(QWidget* control, int controlId);

/// The control with that number below `root`, null when there is none. Found once, then remembered with
/// the root; a control made later is found as well.
QWidget* find(const QWidget* root, int controlId);

/// As `find`, for a control known to be of class T; null also when it is of another class.
template <typename T>
T* find(const QWidget* root, int controlId) {
    return qobject_cast<T*>(find(root, controlId));
}

/// All controls below `root` that carry a number, in the order of the form.
std::vector<QWidget*> all(const QWidget* root);

/// Lets the user change a control, or only read it: the text of a field can then still be selected and
/// copied; anything else is disabled.
void setEditable(QWidget* control, bool editable);

/// Presses a button down or lets it up, without announcing a click. Unlike `setChecked` of the button this
/// also lets up the last one that is down among exclusive buttons.
void setChecked(QAbstractButton* button, bool checked);

/// Names a control for those who do not see what stands beside it.
void setName(QWidget* control, const QString& name);
/// Names each control below `root` that a label stands for by the label's text, for those who do not see
/// both.
void nameByLabels(QWidget* root);

/// Makes the buttons of these numbers one group, of which one is down at a time. Without it all radio buttons
/// below one parent count as one group, also those in frames inside each other.
void group(QWidget* root, std::span<const int> radios);

/// Lets every edit field and every open grid cell below `root` take what was typed, as if the user had
/// left it.
void commitEdits(QWidget* root);

/// Lets every edit field and every open grid cell below `root` forget what was typed and does not count yet.
void dropEdits(QWidget* root);

} // namespace KorControls
