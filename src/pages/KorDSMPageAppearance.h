#pragma once

#include "pages/KorDSMFormPage.h"

/// Line types, colours and hatching with which objects are drawn.
class KorDSMPageAppearance : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageAppearance(QWidget* parent);
};
