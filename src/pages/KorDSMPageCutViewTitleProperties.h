#pragma once

#include "pages/KorDSMTitlePage.h"

/// Where the titles of cut views are placed and what they say.
class KorDSMPageCutViewTitleProperties : public KorDSMTitlePage {
    Q_OBJECT

public:
    explicit KorDSMPageCutViewTitleProperties(QWidget* parent);
};
