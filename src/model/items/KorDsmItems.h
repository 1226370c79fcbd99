#pragma once

#include "model/items/KorDsmRecordItem.h"

// The items that show records, one class per record kind.

class KorDsmDetailStyleCategoryItem
    : public KorDsmRecordItem<StructDetBaseCategory, KorDSMDefines::kDetailStyleCategory> {};

/// A detail style; its children are its view requests.
class KorDsmDetailStyleItem : public KorDsmRecordItem<StructDetailStyle, KorDSMDefines::kDetailStyle> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
};

class KorDsmViewRequestCategoryItem
    : public KorDsmRecordItem<StructDetViewRequestCategory, KorDSMDefines::kViewRequestCategory> {};

/// A view request; its children are its system and box, representation map and view dimensioning.
class KorDsmViewRequestItem : public KorDsmRecordItem<StructDetViewRequest, KorDSMDefines::kViewRequest> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }
};

class KorDsmSystemAndBoxItem
    : public KorDsmRecordItem<StructDetViewSystemAndBox, KorDSMDefines::kSystemAndBox> {};

/// A view dimensioning strategy; its children are its dimension requests.
class KorDsmViewDimensioningItem
    : public KorDsmRecordItem<StructDetViewDimStrategy, KorDSMDefines::kViewDimensioning> {
public:
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }
};

class KorDsmDimRequestGroupItem
    : public KorDsmRecordItem<StructDetViewDimRequestLinearGroup, KorDSMDefines::kDimRequestGroup> {};

/// A dimension request; its children are its point selections.
class KorDsmDimRequestItem
    : public KorDsmRecordItem<StructDetViewDimRequestLinear, KorDSMDefines::kDimRequest> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    /// Stores the name and shows it in the item's entry.
    void setName(KorString name) override;
};

/// A point selection; its child is its qualifier set.
class KorDsmPointSelectionItem
    : public KorDsmRecordItem<StructDetViewDimPointSelection, KorDSMDefines::kPointSelection> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }
};

class KorDsmQualifierSetItem;
class KorDsmAppearanceItem;
class KorDsmAnnotationStrategyItem;

/// An entry of a representation map; it has exactly one qualifier set, appearance and annotation strategy.
class KorDsmReprMapItem : public KorDsmRecordItem<StructDetObjReprMapKey, KorDSMDefines::kReprMap> {
public:
    // The three take the child over. Each may be created only while there is none.
    void createQualifierSet(std::unique_ptr<KorDSMDatabaseItem> child);
    void createAppearance(std::unique_ptr<KorDSMDatabaseItem> child);
    void createAnnotationStrategy(std::unique_ptr<KorDSMDatabaseItem> child);

    KorDsmQualifierSetItem* m_QualifierSet = nullptr;
    KorDsmAppearanceItem* m_Appearance = nullptr;
    KorDsmAnnotationStrategyItem* m_AnnotationStrategy = nullptr;

protected:
    void dependentsDropped() override;
};

/// A representation map; its children are its entries.
class KorDsmReprMapRuleItem : public KorDsmRecordItem<StructDetObjReprMap, KorDSMDefines::kReprMapRule> {
public:
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }
};

class KorDsmQualifierSetGroupItem
    : public KorDsmRecordItem<StructDetObjQualifierSetGroup, KorDSMDefines::kQualifierSetGroup> {};

class KorDsmQualifierSetItem
    : public KorDsmRecordItem<StructDetObjQualifierSet, KorDSMDefines::kQualifierSet> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }
};

class KorDsmAnnotationGroupItem
    : public KorDsmRecordItem<StructDetObjAnnotationGroup, KorDSMDefines::kAnnotationGroup> {};

/// An annotation strategy; its children are its annotation arrangements.
class KorDsmAnnotationStrategyItem
    : public KorDsmRecordItem<StructDetObjAnnotationStrategy, KorDSMDefines::kAnnotationStrategy> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { m_Record.setRunBezeichnung(name); }

    StructDetAnnotationType m_AnnotationType;
};

class KorDsmAppearanceItem : public KorDsmRecordItem<StructDetObjAppearance, KorDSMDefines::kAppearance> {};

/// An annotation arrangement: an arranger control record, or, as its flag says, an arranger strategy record.
class KorDsmAnnotationArrangementItem : public KorDSMDatabaseItem {
public:
    KorDsmAnnotationArrangementItem()
        : KorDSMDatabaseItem(*KorDSMFamilies::of(KorDSMDefines::kAnnotationArrangement)) {}

    bool isEqual(const KorDSMDatabaseItem& other) const override;
    KorString getDisplayName() const override;
    const StructRecord* record() const override;
    eTableType tableType() const override;
    void assignRecord(const StructRecord& newRecord) override;
    void updateRecord(const StructRecord& changed) override;

    /// Whether the pages of the second arranger kind serve the item.
    bool usesNewArranger() const;

    StructDetArrangerControl m_Control;
    StructDetArrangerStrategy m_Strategy;
    bool m_bStandsForStrategy = false;
};
