#include "pages/FoldingColumns.h"

QSize FoldingColumns::minimumSize() const {
    QSize least = QBoxLayout::minimumSize();
    if (hasTwo())
        least.setWidth(std::max(itemAt(0)->minimumSize().width(), itemAt(1)->minimumSize().width()));
    return least;
}

void FoldingColumns::setGeometry(const QRect& room) {
    if (hasTwo()) {
        const int beside = itemAt(0)->minimumSize().width() + spacing() + itemAt(1)->minimumSize().width();
        const bool isFolded = room.width() < beside;
        setDirection(isFolded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        setStretch(0, isFolded ? 0 : 1);
    }
    QBoxLayout::setGeometry(room);
}
