#pragma once

#include <QBoxLayout>

/// Two columns side by side, or one below the other where there is no room for that. The layout asks for no
/// more width than the wider column needs. A third item can be a spacer that keeps the columns together; a
/// spacer in the place of the second column leaves the first one all where half is too little for it.
class KorFoldingColumns : public QHBoxLayout {
public:
    using QHBoxLayout::QHBoxLayout;

    QSize minimumSize() const override;
    void setGeometry(const QRect& room) override;

private:
    bool hasTwo() const { return count() >= 2 && !itemAt(0)->spacerItem() && !itemAt(1)->spacerItem(); }
    void shareWithSpacer(int width);

    int m_spacer = 0;  // its stretch where there is room
    int m_stretch = 0; // of the first column while it stands beside the other
};
