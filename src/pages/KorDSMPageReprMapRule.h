#pragma once

#include "pages/KorDSMFormPage.h"

/// A representation map: what becomes of objects that none of its entries selects, and the entries.
class KorDSMPageReprMapRule : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageReprMapRule(QWidget* parent);
};
