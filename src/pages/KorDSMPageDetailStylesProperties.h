#pragma once

#include "pages/KorDSMTitlePage.h"

/// Where the title of a detail drawing is placed and what it says.
class KorDSMPageDetailStylesProperties : public KorDSMTitlePage {
    Q_OBJECT

public:
    explicit KorDSMPageDetailStylesProperties(QWidget* parent);
};
