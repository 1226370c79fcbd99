#pragma once

#include "pages/KorDSMPage.h"

class KorListCtrl;

/// The categories under which a view request is offered.
class KorDSMPageViewCategories : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewCategories(QWidget* parent);

    bool OnInitDialog() override;
    bool loadData() override;
    std::vector<ShownColumns> shownColumns() const override;

private:
    void onCheckToggled(int row);

    KorListCtrl* m_list = nullptr;
};
