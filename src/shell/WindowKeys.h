#pragma once

#include <QWidgetList>

#include <functional>

class KorTabCtrl;
class QAbstractButton;
class QKeySequence;

/// Keys that hold in a whole window, wherever the focus is.
namespace WindowKeys {

/// The key presses a button of the window, and the tool tip of the button says so.
void press(QAbstractButton& button, const QList<QKeySequence>& keys);
/// Ctrl+Tab and Ctrl+Shift+Tab turn to the next page of the tabs and to the one before.
void turnPages(QWidget& window, KorTabCtrl& tabs);
/// F6 and Shift+F6 lead round the parts of the window: to the first of these, or of what is in it, that can
/// have the focus now, behind the part that has it.
void walk(QWidget& window, const std::function<QWidgetList()>& parts);
/// Shift+F10 opens the menu of what has the focus, as the key of menus does, which not every keyboard has.
void openMenus(QWidget& window);

} // namespace WindowKeys
