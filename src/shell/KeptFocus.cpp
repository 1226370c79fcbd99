#include "shell/KeptFocus.h"

#include <QApplication>

KeptFocus::KeptFocus() : m_control(QApplication::focusWidget()) {}

KeptFocus::~KeptFocus() {
    if (m_control && m_control != QApplication::focusWidget() && m_control->isVisible() &&
        m_control->isEnabled())
        m_control->setFocus(Qt::OtherFocusReason);
}
