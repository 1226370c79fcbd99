#pragma once

class QEvent;

/// For event filters while nothing may be touched: whether the event is something that the user does, which
/// nobody shall get. A window that was to be closed stays open.
bool swallowsInput(QEvent& event);
/// Whether the user begins something with the event.
bool beginsCommand(const QEvent& event);
/// Whether the event is the press of Esc, be it taken for a shortcut or not.
bool isEscape(const QEvent& event);
