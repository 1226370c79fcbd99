#include "controls/KorOwnColors.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

KorOwnColors::KorOwnColors(QWidget* widget, Choose choose)
    : QObject(widget), m_widget(widget), m_choose(std::move(choose)) {
    widget->installEventFilter(this);
    chooseAnew();
}

void KorOwnColors::setOn(bool on) {
    m_isOn = on;
    m_around.reset();
    chooseAnew();
}

bool KorOwnColors::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange ||
        event->type() == QEvent::ParentChange)
        chooseAnew();
    return false;
}

void KorOwnColors::chooseAnew() {
    const QWidget* parent = m_widget->isWindow() ? nullptr : m_widget->parentWidget();
    const QPalette around = parent ? parent->palette() : QApplication::palette(m_widget);
    if (m_around == around)
        return;
    m_around = around;
    QPalette own;
    own.setResolveMask(0);
    if (m_isOn)
        m_choose(own, around);
    m_widget->setPalette(own);
}
