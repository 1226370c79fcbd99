#pragma once

#include "pages/KorDSMFormPage.h"

/// How far labels may move from their objects.
class KorDSMPageArrangerControl : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageArrangerControl(QWidget* parent);
};
