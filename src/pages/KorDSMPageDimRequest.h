#pragma once

#include "pages/KorDSMFormPage.h"

/// A dimension line: its kind, its direction and the points between which it runs.
class KorDSMPageDimRequest : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageDimRequest(QWidget* parent);
};
