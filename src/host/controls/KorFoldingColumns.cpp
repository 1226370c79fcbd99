#include "controls/KorFoldingColumns.h"

#include <algorithm>

QSize KorFoldingColumns::minimumSize() const {
    QSize least = QHBoxLayout::minimumSize();
    if (hasTwo())
        least.setWidth(std::max(itemAt(0)->minimumSize().width(), itemAt(1)->minimumSize().width()) +
                       contentsMargins().left() + contentsMargins().right());
    return least;
}

void KorFoldingColumns::setGeometry(const QRect& room) {
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
