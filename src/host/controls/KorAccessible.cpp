#include "controls/KorAccessible.h"

#include <QAccessible>
#include <QWidget>

void KorAccessible::forget(QWidget* widget) {
    if (QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(told));
}
