#include "controls/KorComboBox.h"
#include "controls/KorGridDelegate.h"
#include "controls/KorMFCGridCtrl.h"

#include <QDrag>
#include <QDropEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

// What the mouse does in a grid beyond selecting.

// The picture of the rows, which the toolkit would hang at the mouse, covers the line between rows.
void KorMFCGridCtrl::startDrag(Qt::DropActions actions) {
    constexpr QPoint kBesideTheMouse(-16, -12);
    constexpr double kOpacity = 0.7;
    const QRect shown = visualRect(currentIndex().siblingAtColumn(0)) & viewport()->rect();
    if (shown.isEmpty() || !m_enabled)
        return;
    const QPixmap seen = viewport()->grab(shown);
    QPixmap picture(seen.size());
    picture.setDevicePixelRatio(seen.devicePixelRatio());
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        painter.setOpacity(kOpacity);
        painter.drawPixmap(0, 0, seen);
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(selectedIndexes()));
    drag->setPixmap(picture);
    drag->setHotSpot(kBesideTheMouse);
    drag->exec(actions, Qt::MoveAction);
}

// Before which row what is dropped comes; -1 where it comes from elsewhere.
int KorMFCGridCtrl::placeAt(const QDropEvent& event) const {
    if (event.source() != this || !m_enabled)
        return -1;
    const QModelIndex under = indexAt(event.position().toPoint());
    const bool isBelow = under.isValid() && event.position().y() > visualRect(under).center().y();
    return under.isValid() ? under.row() + isBelow : rowCount();
}

void KorMFCGridCtrl::markPlace(int place) {
    m_markedPlace = place;
    viewport()->update();
}

void KorMFCGridCtrl::dragMoveEvent(QDragMoveEvent* event) {
    QTableWidget::dragMoveEvent(event);
    markPlace(placeAt(*event));
}

void KorMFCGridCtrl::dragLeaveEvent(QDragLeaveEvent* event) {
    QTableWidget::dragLeaveEvent(event);
    markPlace(-1);
}

void KorMFCGridCtrl::paintEvent(QPaintEvent* event) {
    QTableWidget::paintEvent(event);
    if (m_markedPlace < 0)
        return;
    const int y = m_markedPlace < rowCount()
                      ? rowViewportPosition(m_markedPlace)
                      : rowViewportPosition(rowCount() - 1) + rowHeight(rowCount() - 1);
    constexpr int kHalf = 1;
    QPainter(viewport())
        .fillRect(QRect(0, std::max(y - kHalf, 0), viewport()->width(), 2 * kHalf),
                  palette().color(QPalette::Text));
}

void KorMFCGridCtrl::dropEvent(QDropEvent* event) {
    const int place = placeAt(*event);
    markPlace(-1);
    // The rows are not the toolkit's to take away.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    setState(NoState);
    if (place >= 0)
        Q_EMIT rowsDropped(place);
}

// The cell whose arrow is clicked.
QModelIndex KorMFCGridCtrl::arrowAt(const QMouseEvent& event) const {
    const QModelIndex index = indexAt(event.position().toPoint());
    const bool isPlain = event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier;
    const bool isChoice = m_enabled && index.isValid() && index.flags().testFlag(Qt::ItemIsEditable) &&
                          index.data(KorGridDelegate::kChoicesRole).isValid();
    const bool isArrow = KorGridDelegate::arrowPart(visualRect(index)).contains(event.position().toPoint());
    return isPlain && isChoice && isArrow ? index : QModelIndex();
}

void KorMFCGridCtrl::mousePressEvent(QMouseEvent* event) {
    m_pressedArrow = arrowAt(*event);
    QTableWidget::mousePressEvent(event);
}

// A click on the arrow opens the list at once, as that of any combo.
void KorMFCGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    const QModelIndex arrow = arrowAt(*event);
    const bool opens = arrow.isValid() && arrow == m_pressedArrow && state() != DraggingState;
    const EditTriggers triggers = editTriggers();
    if (opens)
        setEditTriggers(triggers & ~EditTriggers(SelectedClicked)); // which waits for a second click
    QTableWidget::mouseReleaseEvent(event);
    setEditTriggers(triggers);
    if (!opens)
        return;
    QTableWidget::edit(arrow);
    if (auto* combo = qobject_cast<KorComboBox*>(indexWidget(arrow)))
        combo->showPopup();
}

void KorMFCGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableWidget::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (m_opensRows && index.isValid() && event->button() == Qt::LeftButton)
        Q_EMIT rowOpened(index.row(), index.column());
}
