#pragma once

#include <QComboBox>

#include <vector>

/// A combo box that the wheel changes only while it has the focus: a user who scrolls a page with the
/// mouse over a combo must not change a stored value.
class KorComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit KorComboBox(QWidget* parent = nullptr);

    /// Shows a picture before each entry, in their order, none larger than `size`. The entries make room for
    /// the widest; without any picture all stay as they are.
    void setPictures(const std::vector<QIcon>& pictures, QSize size);

    /// The row that is pointed at is marked so softly that its picture stays visible.
    void showPopup() override;

Q_SIGNALS:
    /// The user opens the list or goes through it by keys or wheel: what is expensive about it is due now.
    void choosing();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
