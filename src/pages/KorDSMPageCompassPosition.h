#pragma once

#include "pages/CompassChoice.h"
#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"

/// The north compass of a view, and where it stands on overview drawings.
class KorDSMPageCompassPosition : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageCompassPosition(QWidget* parent);

    bool OnInitDialog() override;
    bool loadData() override;
    void enableControls() override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    PageFields m_fields;
    CompassChoice m_compass;
};
