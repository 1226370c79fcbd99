#pragma once

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

    /// Sets the length of the content list to 0. Does nothing where there is no such list.
    virtual void clearContent() {}
    virtual bool isContentEmpty() { return false; }

    KorString getDisplayName() const override { return m_Name; }

    /// 0 Standard, 1 User, i + 3 installed add-in i.
    eIndex m_AddInIndex = KorDSNDefinitions::kStandardIndex;
    KorString m_Name;
    KorString m_Image;      ///< picture file shown beside the add-in; empty: none
    int m_ImageIndex = -1;  ///< index in the tree's image list once the image was added there
};

/// An add-in item whose content is its child list.
template <int IconIndex, bool Expanded>
class KorDsmFilledAddInItem : public KorDsmAddInContentItem {
public:
    KorDsmFilledAddInItem() {
        m_IconIndex = IconIndex;
        m_bExpanded = Expanded;
    }

    void clearContent() override { deleteChildren(); }
    bool isContentEmpty() override { return children().isEmpty(); }
};

class KorDsmDetailStylesAddInItem : public KorDsmFilledAddInItem<12, true> {};
class KorDsmAnnotationsAddInItem : public KorDsmFilledAddInItem<10, false> {};
class KorDsmDimRequestsAddInItem : public KorDsmFilledAddInItem<11, false> {};
class KorDsmQualifierSetsAddInItem : public KorDsmFilledAddInItem<14, false> {};

/// A database or add-in in the view request dialog.
class KorDsmAddInRequestItem : public KorDSMDatabaseItem {
public:
    KorDsmAddInRequestItem() { m_Type = KorDSMDefines::kAddInContent; }

    eIndex m_AddInIndex = KorDSNDefinitions::kStandardIndex;
};
