#pragma once

#include "data/KorScales.h"
#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"

class QAbstractButton;
class VELComboTree;
struct StructDetViewRequest;

/// Scale, choice, arrangement and use of a view, and its compass.
class KorDSMPageViewProperties : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewProperties(QWidget* parent);

    bool OnInitDialog() override;
    bool fillLists() override;
    bool loadData() override;

private:
    static ScaleUnitType scaleUnits();
    const StructDetViewRequest& request() const;
    void alignFields();
    void fillScales();
    void selectScale();
    void onScaleChosen();

    QAbstractButton* button(int controlId) const;
    int checkedIn(int first, int last) const;
    void showCompass();
    void showCompassPicture(bool symbol);
    void enableCompass(bool enable);
    void onCompassClicked(bool shown);
    void writeCompass();

    PageFields m_fields;
    VELComboTree* m_scales = nullptr;
};
