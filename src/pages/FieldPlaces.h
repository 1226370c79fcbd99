#pragma once

#include "session/FieldPlace.h"

class QWidget;

/// Knows which of its controls shows which cell.
class FieldPlaces {
public:
    virtual ~FieldPlaces() = default;

    /// The cell that a control shows, which has the focus; nothing for a control that shows none.
    virtual std::optional<FieldPlace> placeOf(const QWidget& control) const = 0;
    /// The control that shows the cell, and gets the focus to edit it; null where there is none.
    virtual QWidget* bringUp(RowRef row, int column) = 0;
};
