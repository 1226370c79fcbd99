#pragma once

#include "pages/KorDSMFormPage.h"

/// The same for labels that the second arranger places, and in which order it does.
class KorDSMPageArrangerControlNew : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageArrangerControlNew(QWidget* parent);
};
