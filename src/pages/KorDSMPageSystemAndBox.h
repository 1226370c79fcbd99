#pragma once

#include "pages/KorDSMFormPage.h"

/// From where a view looks, and which box of the model it shows.
class KorDSMPageSystemAndBox : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageSystemAndBox(QWidget* parent);
};
