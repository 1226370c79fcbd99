#pragma once

#include "pages/KorDSMPage.h"

class PartListEditor;

/// The views of a detail style, as a list.
class KorDSMPageStyleViews : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageStyleViews(QWidget* parent);

    bool OnInitDialog() override;
    bool loadData() override;
    void enableControls() override;
    std::vector<ShownColumns> shownColumns() const override;

private:
    PartListEditor* m_views = nullptr;
};
