#pragma once

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"

/// A section: one of the four top nodes. Its two children are the Standard and the User database node.
class KorDsmSectionItem : public KorDSMDatabaseItem {
public:
    /// What the section is, and its name.
    void describe(const KorDSMSection& section, const KorString& name) {
        setType(section.type);
        m_Section = section.section;
        m_Name = name;
    }

    KorDSMDefines::eViewSections section() const { return m_Section; }
    KorString getDisplayName() const override { return m_Name; }

private:
    KorString m_Name;
    KorDSMDefines::eViewSections m_Section = KorDSMDefines::kViewDetailStyles;
};

/// A node that groups the add-ins of one database.
class KorDsmDatabaseContentItem : public KorDSMDatabaseItem {
public:
    explicit KorDsmDatabaseContentItem(KorDSMDefines::eItemType type = KorDSMDefines::kDatabaseContent)
        : KorDSMDatabaseItem(type) {}
    KorDsmDatabaseContentItem(eDSN database, std::int32_t icon, const KorString& name)
        : KorDSMDatabaseItem(KorDSMDefines::kDatabaseContent, icon), m_Name(name), m_Database(database) {}

    eDSN database() const { return m_Database; }
    KorString getDisplayName() const override { return m_Name; }

private:
    KorString m_Name;
    eDSN m_Database = KorDSNDefinitions::kStandard;
};

/// The content of one database or add-in inside a section.
class KorDsmAddInContentItem : public KorDSMDatabaseItem {
public:
    KorDsmAddInContentItem() : KorDSMDatabaseItem(KorDSMDefines::kAddInContent) {}
    /// The content of a section: with the icon of its family, and expanded where it is loaded at once.
    explicit KorDsmAddInContentItem(const KorDSMSection& section)
        : KorDSMDatabaseItem(KorDSMDefines::kAddInContent, KorDSMFamilies::of(section.family)->icon,
                             section.load != nullptr),
          m_pSection(&section) {}

    /// Sets the length of the content list to 0. Does nothing where there is no such list.
    virtual void clearContent() {}
    virtual bool isContentEmpty() { return false; }

    /// Whose content it is, and what that is called.
    void describe(eIndex index, const KorString& name) {
        m_AddInIndex = index;
        m_Name = name;
    }

    /// Null for content of no section.
    const KorDSMSection* section() const { return m_pSection; }
    /// 0 Standard, 1 User, i + 3 installed add-in i.
    eIndex index() const { return m_AddInIndex; }
    int addInIndex() const override { return m_AddInIndex; }
    KorString getDisplayName() const override { return m_Name; }
    /// Picture file shown beside the add-in; empty: none.
    const KorString& image() const { return m_Image; }
    void setImage(const KorString& file) { m_Image = file; }
    /// Index in the trees' image list once the image was added there, -1 before.
    int imageIndex() const { return m_ImageIndex; }
    void setImageIndex(int index) { m_ImageIndex = index; }

private:
    const KorDSMSection* m_pSection = nullptr;
    eIndex m_AddInIndex = KorDSNDefinitions::kStandardIndex;
    KorString m_Name;
    KorString m_Image;
    int m_ImageIndex = -1;
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
    explicit KorDsmAddInRequestItem(eIndex index = KorDSNDefinitions::kStandardIndex,
                                    const KorString& name = {}, std::int32_t icon = 0)
        : KorDSMDatabaseItem(KorDSMDefines::kAddInContent, icon), m_AddInIndex(index), m_Name(name) {}

    int addInIndex() const override { return m_AddInIndex; }
    KorString getDisplayName() const override { return m_Name; }

private:
    eIndex m_AddInIndex;
    KorString m_Name;
};
