#include "controls/label/LabelCombo.h"

#include <QTimer>

LabelCombo::LabelCombo(QWidget* parent) : KorComboBox(parent) {
    connect(this, &QComboBox::activated, this, [this] {
        if (m_closing)
            Q_EMIT chosenInList();
    });
}

// A choice in the list closes the list first and is announced in the same turn; cancelling only closes it.
void LabelCombo::hidePopup() {
    KorComboBox::hidePopup();
    m_closing = true;
    QTimer::singleShot(0, this, [this] { m_closing = false; });
}
