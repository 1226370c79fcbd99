#pragma once

#include <QComboBox>

/// A combo of the label's tool bar. The wheel changes it only while it has the focus, so that scrolling past
/// it edits nothing; and it tells when a choice was made in its opened list, after which the user wants to go
/// on typing in the field.
class LabelCombo : public QComboBox {
    Q_OBJECT

public:
    explicit LabelCombo(QWidget* parent = nullptr);

    void hidePopup() override;

Q_SIGNALS:
    void chosenInList();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    bool m_closing = false;
};
