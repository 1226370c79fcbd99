#pragma once

#include "operations/KorScales.h"
#include "pages/CompassChoice.h"
#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"

class FormBody;
class VELComboTree;
struct StructDetViewRequest;

/// Scale, choice, arrangement, depth and use of a view, and its compass.
class KorDSMPageViewProperties : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewProperties(QWidget* parent);

    bool OnInitDialog() override;
    bool fillLists() override;
    bool loadData() override;
    void enableControls() override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    const StructDetViewRequest& request() const;
    void alignFields();
    KorString scaleName() const;
    void fillScales();
    void selectScale();
    void onScaleChosen();

    PageFields m_fields;
    CompassChoice m_compass;
    VELComboTree* m_scales = nullptr;
    FormBody* m_form = nullptr;
};
