#pragma once

#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"

class KorDsmDetailStyleItem;
class KorDsmViewRequestItem;
class QComboBox;
class RecordButtons;
class VELComboTree;
struct StructDetViewRequest;

/// Which view request stands at its place of a detail style, and the system and box, the representation map
/// and the dimensioning that it uses.
class KorDSMPageViewDefinition : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageViewDefinition(QWidget* parent);

    bool OnInitDialog() override;
    bool fillLists() override;
    bool refreshLists() override;
    bool loadData() override;
    void enableControls() override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    KorDsmViewRequestItem* viewItem() const;
    /// The detail style that the view belongs to, or null, and the view's place in it, or -1.
    KorDsmDetailStyleItem* styleItem() const;
    int placeInStyle() const;
    bool putIntoStyle(const StructDetViewRequest& request);

    void onViewChosen();
    void onCopy();
    void onRename();
    void showNewName();
    void addMaker(int combo, int column);
    void enableWays();
    void replaceDependents(int column);
    void goTo(int section);
    void onNotice(const DsmListChanged& notice);
    void onViewNotice(int action, const KorString& name);
    void onSectionNotice(QComboBox& combo, int action, const KorString& name);

    PageFields m_fields;
    VELComboTree* m_views = nullptr;
    std::vector<RecordButtons*> m_makers; // beside the combos of sections
};
