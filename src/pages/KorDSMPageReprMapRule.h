#pragma once

#include "pages/KorDSMFormPage.h"

/// A representation map: its entries, below which stands what becomes of objects that none of them selects.
class KorDSMPageReprMapRule : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageReprMapRule(QWidget* parent);
};
