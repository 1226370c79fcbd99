#pragma once

#include "pages/KorDSMFormPage.h"

/// Dimension points: of which objects, and which of their points.
class KorDSMPageDimPointSelection : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageDimPointSelection(QWidget* parent);
};
