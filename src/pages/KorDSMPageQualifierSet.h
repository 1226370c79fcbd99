#pragma once

#include "pages/KorDSMFormPage.h"

/// A set of qualifiers: how they are combined, and which; of the selected one what it asks for.
class KorDSMPageQualifierSet : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageQualifierSet(QWidget* parent);
};
