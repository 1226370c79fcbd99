#pragma once

#include "pages/KorDSMFormPage.h"

/// The dimensioning of a view: how far its lines stand from the view, and which dimensions it has.
class KorDSMPageViewDimensioning : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewDimensioning(QWidget* parent);
};
