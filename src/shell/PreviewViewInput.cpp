#include "shell/PreviewView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QTimer>

#include <algorithm>
#include <cmath>

// What mouse, gestures and keys do in the view.

namespace {

constexpr double kStep = 1.25; // of a zoom

} // namespace

bool PreviewView::event(QEvent* event) {
    if (event->type() == QEvent::Gesture) {
        if (const auto* pinch =
                static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture))) {
            zoomAbout(mapFromGlobal(pinch->centerPoint().toPoint()), pinch->scaleFactor());
            return true;
        }
    }
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            zoomAbout(gesture->position(), 1 + gesture->value());
            return true;
        }
    }
    return QWidget::event(event);
}

void PreviewView::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    zoomAbout(event->position(), std::pow(kStep, event->angleDelta().y() / kNotch));
    event->accept();
}

void PreviewView::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->position();
    m_isDragging = event->button() == Qt::MiddleButton;
    m_isDividing = event->button() == Qt::LeftButton && isOnDivider(event->position());
}

void PreviewView::mouseMoveEvent(QMouseEvent* event) {
    if (m_isDividing)
        return divided(std::clamp(event->position().x() / std::max(width(), 1), 0.0, 1.0));
    if (!(event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) {
        isOnDivider(event->position()) ? setCursor(Qt::SplitHCursor) : unsetCursor();
        return pointAt(placeAt(event->position()));
    }
    const QPointF by = event->position() - m_pressed;
    if (!m_isDragging && by.manhattanLength() < QApplication::startDragDistance())
        return;
    m_isDragging = true;
    setCursor(Qt::ClosedHandCursor);
    m_pressed = event->position();
    move(by);
}

void PreviewView::mouseReleaseEvent(QMouseEvent* event) {
    unsetCursor();
    const bool wasDragging = std::exchange(m_isDragging, false);
    const bool wasDividing = std::exchange(m_isDividing, false);
    if (wasDragging || wasDividing || event->button() != Qt::LeftButton)
        return;
    m_clicked = placeAt(event->position());
    m_clickedAt = event->globalPosition().toPoint();
    if (m_clicked)
        m_single->start(QApplication::doubleClickInterval());
}

void PreviewView::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto first = std::exchange(m_clicked, std::nullopt);
    if (const auto place = first ? first : placeAt(event->position());
        place && event->button() == Qt::LeftButton)
        Q_EMIT doubleClicked(*place);
    m_isDragging = true; // the release that follows is no click
}

void PreviewView::leaveEvent(QEvent*) {
    pointAt(std::nullopt);
}

void PreviewView::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const auto place = isByKey ? placeForKeys() : placeAt(event->pos());
    Q_EMIT menuWanted(place, isByKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void PreviewView::keyPressEvent(QKeyEvent* event) {
    constexpr int kPan = 40; // pixels
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoomBy(kStep);
    case Qt::Key_Minus:
        return zoomBy(1 / kStep);
    case Qt::Key_0:
        return fit();
    case Qt::Key_1:
        return actualSize();
    case Qt::Key_Left:
        return move({kPan, 0});
    case Qt::Key_Right:
        return move({-kPan, 0});
    case Qt::Key_Up:
        return move({0, kPan});
    case Qt::Key_Down:
        return move({0, -kPan});
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (const auto place = placeForKeys())
            Q_EMIT clicked(*place, mapToGlobal(toView(m_all[*place]->box().middle()).toPoint()));
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}
