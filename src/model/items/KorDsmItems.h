#pragma once

#include "model/items/KorDsmRecordItem.h"

// The items that show records, one class per record kind.

class KorDsmDetailStyleCategoryItem
    : public KorDsmRecordItem<StructDetBaseCategory, KorDSMDefines::kDetailStyleCategory> {};

/// A detail style; its children are its view requests. Of all that a database has few are ever looked at, so
/// they can be left until somebody asks for them.
class KorDsmDetailStyleItem : public KorDsmRecordItem<StructDetailStyle, KorDSMDefines::kDetailStyle> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    /// Leaves the view requests; those of the source that is current now are meant.
    void leaveViews();
    std::vector<const StructRecord*> rowsOfChildrenLeft() const override;

protected:
    void makeChildren() override;

private:
    SourceId m_Source; // of the views that are left
};

class KorDsmViewRequestCategoryItem
    : public KorDsmRecordItem<StructDetViewRequestCategory, KorDSMDefines::kViewRequestCategory> {};

/// A view request; its children are its system and box, representation map and view dimensioning.
class KorDsmViewRequestItem : public KorDsmRecordItem<StructDetViewRequest, KorDSMDefines::kViewRequest> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }
};

class KorDsmSystemAndBoxItem
    : public KorDsmRecordItem<StructDetViewSystemAndBox, KorDSMDefines::kSystemAndBox> {};

/// A view dimensioning strategy; its children are its dimension requests.
class KorDsmViewDimensioningItem
    : public KorDsmRecordItem<StructDetViewDimStrategy, KorDSMDefines::kViewDimensioning> {
public:
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }
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
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }
};

/// An entry of a representation map; it has exactly one qualifier set, appearance and annotation strategy.
class KorDsmReprMapItem : public KorDsmRecordItem<StructDetObjReprMapKey, KorDSMDefines::kReprMap> {
public:
    // The three take the child over. Each may be created only while there is none.
    void createQualifierSet(std::unique_ptr<KorDSMDatabaseItem> child);
    void createAppearance(std::unique_ptr<KorDSMDatabaseItem> child);
    void createAnnotationStrategy(std::unique_ptr<KorDSMDatabaseItem> child);

protected:
    void dependentsDropped() override;

private:
    KorDSMDatabaseItem* m_QualifierSet = nullptr;
    KorDSMDatabaseItem* m_Appearance = nullptr;
    KorDSMDatabaseItem* m_AnnotationStrategy = nullptr;
};

/// A representation map; its children are its entries.
class KorDsmReprMapRuleItem : public KorDsmRecordItem<StructDetObjReprMap, KorDSMDefines::kReprMapRule> {
public:
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }
};

class KorDsmQualifierSetGroupItem
    : public KorDsmRecordItem<StructDetObjQualifierSetGroup, KorDSMDefines::kQualifierSetGroup> {};

class KorDsmQualifierSetItem
    : public KorDsmRecordItem<StructDetObjQualifierSet, KorDSMDefines::kQualifierSet> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }
};

class KorDsmAnnotationGroupItem
    : public KorDsmRecordItem<StructDetObjAnnotationGroup, KorDSMDefines::kAnnotationGroup> {};

/// An annotation strategy; its children are its annotation arrangements.
class KorDsmAnnotationStrategyItem
    : public KorDsmRecordItem<StructDetObjAnnotationStrategy, KorDSMDefines::kAnnotationStrategy> {
public:
    std::unique_ptr<KorDSMDatabaseItem> clone() const override;
    void setName(KorString name) override { getRecord().setRunBezeichnung(name); }

    const StructDetAnnotationType& annotationType() const { return m_AnnotationType; }
    void setAnnotationType(const StructDetAnnotationType& type) { m_AnnotationType = type; }

private:
    StructDetAnnotationType m_AnnotationType;
};

class KorDsmAppearanceItem : public KorDsmRecordItem<StructDetObjAppearance, KorDSMDefines::kAppearance> {};

/// An annotation arrangement: an arranger control record, or, as its flag says, an arranger strategy record.
class KorDsmAnnotationArrangementItem : public KorDSMDatabaseItem {
public:
    explicit KorDsmAnnotationArrangementItem(bool standsForStrategy = false)
        : KorDSMDatabaseItem(*KorDSMFamilies::of(KorDSMDefines::kAnnotationArrangement)),
          m_bStandsForStrategy(standsForStrategy) {}

    bool isEqual(const KorDSMDatabaseItem& other) const override;
    KorString getDisplayName() const override;
    const StructRecord* record() const override;
    eTableType tableType() const override;
    void assignRecord(const StructRecord& newRecord) override;
    void updateRecord(const StructRecord& changed) override;

    /// Whether the pages of the second arranger kind serve the item.
    bool usesNewArranger() const;

private:
    StructDetArrangerControl m_Control;
    StructDetArrangerStrategy m_Strategy;
    const bool m_bStandsForStrategy;
};
