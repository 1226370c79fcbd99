#pragma once

#include <QWidget>

#include <functional>

/// Dialog and page templates by number. The forms themselves belong to the program, which tells here how
/// to set one up.
namespace KorTemplates {

/// Fills an empty widget with the controls of a template. Returns false when there is no such template.
using Factory = std::function<bool(int templateId, QWidget* window)>;

void setFactory(Factory factory);

/// Fills `window` with the controls of the template and remembers its number there. Returns false, and
/// leaves the window empty, when no such template is known.
bool setUp(int templateId, QWidget* window);

/// The template that `window` was filled from, 0 when it was not.
int templateOf(const QWidget* window);

} // namespace KorTemplates
