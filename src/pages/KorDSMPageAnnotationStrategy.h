#pragma once

#include "pages/KorDSMFormPage.h"

/// An annotation strategy: what its labels say, what they look like, and how they are placed.
class KorDSMPageAnnotationStrategy : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageAnnotationStrategy(QWidget* parent);
};
