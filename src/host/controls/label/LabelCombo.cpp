#include "controls/label/LabelCombo.h"

#include <QTimer>
#include <QWheelEvent>

LabelCombo::LabelCombo(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QComboBox::activated, this, [this] {
        if (m_closing)
            Q_EMIT chosenInList();
    });
}

// A choice in the list closes the list first and is announced in the same turn; cancelling only closes it.
void LabelCombo::hidePopup() {
    QComboBox::hidePopup();
    m_closing = true;
    QTimer::singleShot(0, this, [this] { m_closing = false; });
}

void LabelCombo::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}
