#pragma once

#include <QBoxLayout>

/// Two columns side by side, or one below the other where there is no room for that. The layout asks for no
/// more width than the wider column needs.
class FoldingColumns : public QHBoxLayout {
public:
    QSize minimumSize() const override;
    void setGeometry(const QRect& room) override;

private:
    bool hasTwo() const { return count() == 2 && itemAt(0)->layout() && itemAt(1)->layout(); }
};
