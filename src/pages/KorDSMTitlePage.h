#pragma once

#include "pages/KorDSMPage.h"

#include <span>

class KorInfoCtrl;
class LabelField;
class VELLabelDesignerCtrlWrap;
struct VELTooltipRequest;

/// Where a title can stand: value of the column, radio button, its text, and the picture that explains it
/// (0 for none).
struct TitlePosition {
    int value;
    int radio;
    int prompt;
    int picture = 0;
};

/// What one title page has of its own.
struct TitlePageTable {
    int templateId;
    int pageCode;
    int title; ///< prompt of the tab
    int positionColumn;
    int formatColumn;
    int objectType;    ///< what the designer offers variables for
    int positionFrame; ///< number of the group box
    int formatFrame;   ///< number of the group box
    std::span<const TitlePosition> positions;
    int fallback;            ///< index of the position that is shown for any other value
    int picture = 0;         ///< number of the panel for pictures, 0 for none
    int positionTooltip = 0; ///< prompt, 0 for none
    int designerTooltip = 0; ///< prompt, 0 for none
};

/// Base of the pages that say where a title is placed and what it says. The position is written at the click,
/// the text when the page is left, once per visit and only when it differs.
class KorDSMTitlePage : public KorDSMPage {
    Q_OBJECT

public:
    /// `table` must outlive the page.
    KorDSMTitlePage(QWidget* parent, const TitlePageTable& table);

    bool OnInitDialog() override;
    void OnShow(int show) override;
    bool loadData() override;
    void enableControls() override;
    void storePendingChanges(bool discard) override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    const TitlePosition& positionOf(int number, int TitlePosition::*member) const;
    CellValue stored(int column) const;
    void showPicture(const TitlePosition& position);
    void onPositionClicked(int radioId);
    void answerTooltip(VELTooltipRequest& request) const;

    const TitlePageTable& m_table;
    VELLabelDesignerCtrlWrap* m_designer = nullptr;
    KorInfoCtrl* m_picture = nullptr;
    LabelField* m_title = nullptr;
};
