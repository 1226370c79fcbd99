#pragma once

#include "pages/ClippingLinetypes.h"
#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"
#include "records/ViewRecords.h"

class KorInfoCtrl;
class KorLineEdit;
class QCheckBox;
class QComboBox;
class RecordButtons;

/// How long parts are shortened in a view: which clipping strategy the view uses, and that strategy itself.
class KorDSMPageViewClipping : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewClipping(QWidget* parent);

    bool OnInitDialog() override;
    bool loadData() override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    bool findControls();
    void setTexts();
    void connectControls();
    void addMaker();

    KorOdbcKey clipKey() const;
    bool readClip(StructDetViewLengthClip& clip) const;
    /// Writes a column of the strategy from a control, which is marked where that was not stored.
    bool writeClip(QWidget* control, int column, const CellValue& value);
    QWidget* linetype() const;

    void showUnits();
    void showClip(const StructDetViewLengthClip& clip);
    void showStyledClip(const StructDetViewLengthClip& clip, bool keepsEachSide);
    void clearControls(const std::vector<int>& controls);
    /// Shows which of the type's pictures applies, and enables what the type and the extension leave free.
    void applySituation();
    void showTypePicture(const StructDetViewLengthClip& clip, int situation);

    void onStrategyChosen();
    void onGapChosen();
    void onUseDefaultClicked(bool useDefault);
    void onTypeChosen();
    void onLinetypeChosen(const KorString& name);
    void onCopy();
    void onRename();

    PageFields m_fields;       // shown for every view
    PageFields m_styledFields; // shown for the views of a detail style
    ClippingLinetypes m_linetypes;
    QComboBox* m_strategy = nullptr;
    QComboBox* m_gap = nullptr;
    QComboBox* m_type = nullptr;
    KorLineEdit* m_extension = nullptr;
    QCheckBox* m_useDefault = nullptr;
    KorInfoCtrl* m_typePicture = nullptr;
    RecordButtons* m_maker = nullptr; // beside the strategy
};
