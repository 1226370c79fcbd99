#pragma once

#include <QBoxLayout>

/// Two columns side by side, or one below the other where there is no room for that. The layout asks for no
/// more width than the wider column needs. A third item can be a spacer that keeps the columns together; a
/// spacer in the place of the second column leaves the first one all where half is too little for it.
class KorFoldingColumns : public QHBoxLayout {
public:
    using QHBoxLayout::QHBoxLayout;

    /// The distance between columns that stand below each other, where it is another one, in pixels.
    void setFoldedSpacing(int pixels) { m_foldedSpacing = pixels; }
    /// Always as wide as both need side by side.
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override { return hasTwo() || QHBoxLayout::hasHeightForWidth(); }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect& room) override;

private:
    bool hasTwo() const { return count() >= 2 && !itemAt(0)->spacerItem() && !itemAt(1)->spacerItem(); }
    bool isFolded() const { return direction() == QBoxLayout::TopToBottom; }
    bool mustFold(int width) const;
    int margins() const { return contentsMargins().left() + contentsMargins().right(); }
    int spacingBeside() const { return isFolded() ? m_spacing : spacing(); }
    int spacingBelow() const;
    void shareWithSpacer(int width);
    void fold(bool isToBe);

    int m_foldedSpacing = -1;
    int m_spacing = 0; // of columns that are folded now, side by side
    int m_spacer = 0;  // its stretch where there is room
    int m_stretch = 0; // of the first column while it stands beside the other
};
