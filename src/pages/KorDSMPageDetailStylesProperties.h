#pragma once

#include "pages/KorDSMPage.h"

class KorInfoCtrl;
class VELLabelDesignerCtrlWrap;

/// Where the title of a detail drawing is placed and what it says.
class KorDSMPageDetailStylesProperties : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageDetailStylesProperties(QWidget* parent);

    bool OnInitDialog() override;
    void OnShow(int show) override;
    bool loadData() override;
    void enableControls() override;
    void storePendingChanges(bool discard) override;

private:
    void onTitlePositionClicked(int radioId);

    VELLabelDesignerCtrlWrap* m_designer = nullptr;
    KorInfoCtrl* m_picture = nullptr;
    bool m_titleEdited = false;
};
