#pragma once

#include "pages/KorDSMFormPage.h"

/// A detail style as a whole: where it is filed, how its views stand on the sheet, and how the grid and the
/// drawing are set up; with the values of what it chooses.
class KorDSMPageViewArrangement : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewArrangement(QWidget* parent);
};
