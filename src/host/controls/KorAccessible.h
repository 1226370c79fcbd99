#pragma once

class QWidget;

/// What screen readers know of widgets.
namespace KorAccessible {

/// Lets the toolkit forget what it told of a widget that goes and announces nothing any more, not even that
/// it goes: otherwise the next widget at its address would be taken for it.
void forget(QWidget* widget);

} // namespace KorAccessible
