#pragma once

#include <QComboBox>

/// A combo box that the wheel changes only while it has the focus: a user who scrolls a page with the
/// mouse over a combo must not change a stored value.
class KorComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit KorComboBox(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};
