#pragma once

#include "controls/KorComboBox.h"

/// A combo of the label's tool bar. It tells when a choice was made in its opened list, after which the user
/// wants to go on typing in the field; typing into a combo would choose again.
class LabelCombo : public KorComboBox {
    Q_OBJECT

public:
    explicit LabelCombo(QWidget* parent = nullptr);

    void hidePopup() override;

Q_SIGNALS:
    void chosenInList();

private:
    bool m_closing = false;
};
