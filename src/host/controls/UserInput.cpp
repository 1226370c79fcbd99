#include "controls/UserInput.h"

#include <QKeyEvent>

bool swallowsInput(QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    case QEvent::Close:
        event.ignore(); // one that is swallowed as it comes counts as agreed to
        return true;
    default:
        return false;
    }
}

bool beginsCommand(const QEvent& event) {
    return event.type() == QEvent::MouseButtonPress ||
           (event.type() == QEvent::KeyPress && !static_cast<const QKeyEvent&>(event).isAutoRepeat());
}

bool isEscape(const QEvent& event) {
    const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    return isKey && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}
