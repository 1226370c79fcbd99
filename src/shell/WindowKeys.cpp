#include "shell/WindowKeys.h"

#include "controls/KorTabCtrl.h"
#include "controls/TabStops.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>

namespace {

template <typename Act>
void onKey(QWidget& window, const QList<QKeySequence>& keys, Act act) {
    auto* action = new QAction(&window);
    action->setShortcuts(keys);
    QObject::connect(action, &QAction::triggered, &window, std::move(act));
    window.addAction(action);
}

void turn(const KorTabCtrl& tabs, int by) {
    TabContent* pages = tabs.isVisible() ? tabs.currentContent() : nullptr;
    if (pages && pages->pageCount() > 0)
        pages->setCurrentIndex((pages->currentIndex() + by + pages->pageCount()) % pages->pageCount());
}

void step(const QWidgetList& parts, int by) {
    const QWidget* focus = QApplication::focusWidget();
    const auto count = static_cast<int>(parts.size());
    int at = by > 0 ? -1 : count;
    for (int i = 0; i < count; ++i)
        if (parts[i] == focus || parts[i]->isAncestorOf(focus))
            at = i;
    for (int steps = 0; steps < count; ++steps) {
        at = (at + by + count) % count;
        const QWidgetList stops = TabStops::in({parts[at]});
        if (!stops.isEmpty())
            return stops.first()->setFocus(Qt::ShortcutFocusReason);
    }
}

} // namespace

void WindowKeys::press(QAbstractButton& button, const QList<QKeySequence>& keys) {
    button.setToolTip(keys.first().toString(QKeySequence::NativeText));
    onKey(*button.window(), keys, [&button] { button.click(); });
}

void WindowKeys::turnPages(QWidget& window, KorTabCtrl& tabs) {
    onKey(window, {QKeySequence(Qt::CTRL | Qt::Key_Tab)}, [&tabs] { turn(tabs, 1); });
    onKey(window, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)}, [&tabs] { turn(tabs, -1); });
}

void WindowKeys::walk(QWidget& window, const std::function<QWidgetList()>& parts) {
    onKey(window, {QKeySequence(Qt::Key_F6)}, [parts] { step(parts(), 1); });
    onKey(window, {QKeySequence(Qt::SHIFT | Qt::Key_F6)}, [parts] { step(parts(), -1); });
}

void WindowKeys::openMenus(QWidget& window) {
    onKey(window, {QKeySequence(Qt::SHIFT | Qt::Key_F10)}, [&window] {
        QWidget* focus = window.focusWidget();
        if (!focus)
            return;
        const QPoint place = focus->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent wish(QContextMenuEvent::Keyboard, place, focus->mapToGlobal(place));
        QApplication::sendEvent(focus, &wish);
    });
}
