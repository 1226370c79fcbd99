#pragma once

#include "pages/KorDSMFormPage.h"

/// An entry of a representation map: which objects, drawn how, with which labels.
class KorDSMPageReprMapItem : public KorDSMFormPage {
    Q_OBJECT

public:
    explicit KorDSMPageReprMapItem(QWidget* parent);
};
