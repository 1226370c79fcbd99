#pragma once

#include "pages/KorDSMFormPage.h"

/// The title of a dimension line: what it says and where it stands.
class KorDSMPageDimensionTitleProperties : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageDimensionTitleProperties(QWidget* parent);
};
