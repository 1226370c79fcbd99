#pragma once

#include "base/KorString.h"
#include "controls/KorComboBox.h"

/// A combo box whose choices show pictures (the program's bitmaps, see KorPictures), each standing for a
/// number.
class KorComboBitmap : public KorComboBox {
    Q_OBJECT

public:
    explicit KorComboBitmap(QWidget* parent = nullptr);

    /// Appends a choice. Pictures higher than 32 pixels are shown that high. The text can be empty.
    void addBitmap(int pictureId, const KorString& text, int value);
    /// Chooses by value without announcing it; -1 in `currentIndex()` when there is no such value.
    void selectValue(int value);
    /// The value of the choice, `none` when nothing is chosen.
    int selectedValue(int none = -1) const;

Q_SIGNALS:
    /// The user made a choice.
    void valueSelected(int value);
};
