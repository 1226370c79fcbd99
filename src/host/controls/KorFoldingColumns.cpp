#include "controls/KorFoldingColumns.h"

#include <algorithm>

QSize KorFoldingColumns::sizeHint() const {
    QSize hint = QHBoxLayout::sizeHint();
    if (hasTwo() && isFolded())
        hint.setWidth(itemAt(0)->sizeHint().width() + m_spacing + itemAt(1)->sizeHint().width() + margins());
    return hint;
}

QSize KorFoldingColumns::minimumSize() const {
    QSize least = QHBoxLayout::minimumSize();
    if (hasTwo())
        least.setWidth(std::max(itemAt(0)->minimumSize().width(), itemAt(1)->minimumSize().width()) +
                       margins());
    return least;
}

bool KorFoldingColumns::mustFold(int width) const {
    return hasTwo() && width - margins() < itemAt(0)->minimumSize().width() + spacingBeside() +
                                               itemAt(1)->minimumSize().width();
}

int KorFoldingColumns::spacingBelow() const {
    return isFolded() || m_foldedSpacing < 0 ? spacing() : m_foldedSpacing;
}

// Where the columns do not stand yet as they will, it is what they will need at most.
int KorFoldingColumns::heightForWidth(int width) const {
    const bool folds = mustFold(width);
    if (!hasTwo() || (!folds && !isFolded()))
        return QHBoxLayout::heightForWidth(width);
    const int room = width - margins();
    const auto heightOf = [](QLayoutItem& item, int least) {
        return item.hasHeightForWidth() ? item.heightForWidth(least) : item.sizeHint().height();
    };
    const int edges = contentsMargins().top() + contentsMargins().bottom();
    if (folds)
        return heightOf(*itemAt(0), room) + spacingBelow() + heightOf(*itemAt(1), room) + edges;
    const auto beside = [&](int column) {
        return heightOf(*itemAt(column),
                        std::max(itemAt(column)->minimumSize().width(), (room - m_spacing) / 2));
    };
    return std::max(beside(0), beside(1)) + edges;
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

void KorFoldingColumns::fold(bool isToBe) {
    const int below = spacingBelow();
    if (isToBe) {
        m_stretch = stretch(0);
        m_spacing = spacing();
    }
    setDirection(isToBe ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    setStretch(0, isToBe ? 0 : m_stretch); // the upper column is as high as it must be
    setSpacing(isToBe ? below : m_spacing);
    update(); // those around it gave room to what it was
}

void KorFoldingColumns::setGeometry(const QRect& room) {
    shareWithSpacer(room.width());
    if (hasTwo() && mustFold(room.width()) != isFolded())
        fold(!isFolded());
    QHBoxLayout::setGeometry(room);
}
