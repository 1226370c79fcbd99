#include "controls/KorFoldingColumns.h"

#include <algorithm>

QSize KorFoldingColumns::minimumSize() const {
    QSize least = QHBoxLayout::minimumSize();
    if (hasTwo())
        least.setWidth(std::max(itemAt(0)->minimumSize().width(), itemAt(1)->minimumSize().width()) +
                       contentsMargins().left() + contentsMargins().right());
    return least;
}

// A column that keeps to its half takes all where the half is too little for it.
void KorFoldingColumns::shareWithSpacer(int width) {
    if (count() < 2 || !itemAt(1)->spacerItem())
        return;
    m_spacer = std::max(m_spacer, stretch(1));
    const int wanted = width < 2 * itemAt(0)->sizeHint().width() ? 0 : m_spacer;
    if (stretch(1) != wanted)
        setStretch(1, wanted);
}

void KorFoldingColumns::setGeometry(const QRect& room) {
    shareWithSpacer(room.width());
    if (hasTwo()) {
        const int beside = itemAt(0)->minimumSize().width() + spacing() + itemAt(1)->minimumSize().width();
        const bool isFolded = room.width() - contentsMargins().left() - contentsMargins().right() < beside;
        if (isFolded != (direction() == QBoxLayout::TopToBottom)) {
            m_stretch = isFolded ? stretch(0) : m_stretch;
            setDirection(isFolded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
            setStretch(0, isFolded ? 0 : m_stretch); // the upper column is as high as it must be
        }
    }
    QHBoxLayout::setGeometry(room);
}
