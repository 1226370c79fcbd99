#include "controls/KorComboBox.h"

#include "controls/KorItemSelection.h"

#include <QAbstractItemView>
#include <QWheelEvent>

KorComboBox::KorComboBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus); // the wheel alone must not give it the focus
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
}

void KorComboBox::setPictures(const std::vector<QIcon>& pictures, QSize size) {
    QSize room;
    for (int entry = 0; entry < count() && entry < static_cast<int>(pictures.size()); ++entry) {
        const QIcon& picture = pictures[static_cast<std::size_t>(entry)];
        setItemIcon(entry, picture);
        if (!picture.isNull())
            room = room.expandedTo(picture.actualSize(size));
    }
    if (!room.isEmpty())
        setIconSize(room);
}

void KorComboBox::keyPressEvent(QKeyEvent* event) {
    Q_EMIT choosing();
    QComboBox::keyPressEvent(event);
}

void KorComboBox::showPopup() {
    Q_EMIT choosing();
    QPalette soft = palette();
    KorItemSelection::soften(soft);
    view()->setPalette(soft);
    QComboBox::showPopup();
}

void KorComboBox::wheelEvent(QWheelEvent* event) {
    if (!hasFocus())
        return event->ignore();
    Q_EMIT choosing();
    QComboBox::wheelEvent(event);
}
