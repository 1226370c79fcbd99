#pragma once

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"

/// A section: one of the four top nodes. Its two children are the Standard and the User database node.
class KorDsmSectionItem : public KorDSMDatabaseItem {
public:
    KorDsmSectionItem() = default;

    KorString getDisplayName() const override { return m_Name; }

    KorString m_Name;
    KorDSMDefines::eViewSections m_Section = KorDSMDefines::kViewDetailStyles;
};

/// A node that groups the add-ins of one database.
class KorDsmDatabaseContentItem : public KorDSMDatabaseItem {
public:
    explicit KorDsmDatabaseContentItem(KorDSMDefines::eItemType type = KorDSMDefines::kDatabaseContent) {
        m_Type = type;
    }

    KorString getDisplayName() const override { return m_Name; }

    KorString m_Name;
    eDSN m_Database = KorDSNDefinitions::kStandard;
};

/// The content of one database or add-in inside a section.
class KorDsmAddInContentItem : public KorDSMDatabaseItem {
public:
    KorDsmAddInContentItem() { m_Type = KorDSMDefines::kAddInContent; }
    /// The content of a section: with the icon of its family, and expanded where it is loaded at once.
    explicit KorDsmAddInContentItem(const KorDSMSection& section) : m_pSection(&section) {
        m_Type = KorDSMDefines::kAddInContent;
        m_IconIndex = KorDSMFamilies::of(section.family)->icon;
        m_bExpanded = section.load != nullptr;
    }

    /// Sets the length of the content list to 0. Does nothing where there is no such list.
    virtual void clearContent() {}
    virtual bool isContentEmpty() { return false; }

    KorString getDisplayName() const override { return m_Name; }

    const KorDSMSection* m_pSection = nullptr; ///< null for content of no section
    /// 0 Standard, 1 User, i + 3 installed add-in i.
    eIndex m_AddInIndex = KorDSNDefinitions::kStandardIndex;
    KorString m_Name;
    KorString m_Image;     ///< picture file shown beside the add-in; empty: none
    int m_ImageIndex = -1; ///< index in the tree's image list once the image was added there
};

/// An add-in item of a section: its content is its child list.
template <KorDSMDefines::eViewSections Section>
class KorDsmFilledAddInItem : public KorDsmAddInContentItem {
public:
    KorDsmFilledAddInItem() : KorDsmAddInContentItem(KorDSMFamilies::section(Section)) {}

    void clearContent() override { deleteChildren(); }
    bool isContentEmpty() override { return children().isEmpty(); }
};

class KorDsmDetailStylesAddInItem : public KorDsmFilledAddInItem<KorDSMDefines::kViewDetailStyles> {};
class KorDsmAnnotationsAddInItem : public KorDsmFilledAddInItem<KorDSMDefines::kViewAnnotations> {};
class KorDsmDimRequestsAddInItem : public KorDsmFilledAddInItem<KorDSMDefines::kViewDimRequests> {};
class KorDsmQualifierSetsAddInItem : public KorDsmFilledAddInItem<KorDSMDefines::kViewQualifiers> {};

/// A database or add-in in the view request dialog.
class KorDsmAddInRequestItem : public KorDSMDatabaseItem {
public:
    KorDsmAddInRequestItem() { m_Type = KorDSMDefines::kAddInContent; }

    eIndex m_AddInIndex = KorDSNDefinitions::kStandardIndex;
};
