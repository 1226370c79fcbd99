#pragma once

#include "base/KorExport.h"
#include "model/KorDSMAddedItemsCollection.h"
#include "model/items/KorDsmAddInContentItem.h"

#include <array>

/// What the editor shows, kept by the session from one opening to the next: the four sections with everything
/// loaded below them, the items created while the editor is open, what was selected in each section, where
/// new items go, and the user's options. Each session has one, `KorDSMDialogFactory::getDSMDataStructure`.
/// Used only from the host's user-interface thread.
class DETAILSTYLES_API KorDSMDataStructure {
public:
    enum eUpdateStatus : std::int32_t {
        kUpToDate = 0,        ///< the loader keeps the content
        kReloadRequested = 1, ///< the loader empties and reloads
        kEmptied = 2,         ///< the loader reloads
        kKeepContent = 3,     ///< changes were applied; the loader keeps the content
        kNotLoaded = 4,       ///< the loader empties and reloads
    };
    using eViewSections = KorDSMDefines::eViewSections;

    /// Empty sections, targets and selections at their start values, options as stored (true when absent).
    KorDSMDataStructure();
    /// An empty structure in its initial state; nothing is taken from `other`.
    KorDSMDataStructure(const KorDSMDataStructure& other);
    /// Copies the selection state, the options and the list of added items. The collections are shared, not
    /// copied. The sections are not copied.
    KorDSMDataStructure& operator=(const KorDSMDataStructure& other);
    /// Deletes all items of the sections, and the added items that no other structure shares.
    virtual ~KorDSMDataStructure() = default;

    KorDsmSectionItem* getDetailStylesSection() { return getSection(KorDSMDefines::kViewDetailStyles); }
    KorDsmSectionItem* getQualifiersSection() { return getSection(KorDSMDefines::kViewQualifiers); }
    KorDsmSectionItem* getAnnotationsSection() { return getSection(KorDSMDefines::kViewAnnotations); }
    KorDsmSectionItem* getDimRequestsSection() { return getSection(KorDSMDefines::kViewDimRequests); }
    KorDsmSectionItem* getSection(eViewSections s) { return &m_Sections[static_cast<std::size_t>(s)]; }
    const KorDsmSectionItem* getSection(eViewSections s) const {
        return &m_Sections[static_cast<std::size_t>(s)];
    }

    /// Takes the entry over and links its item with equal ones.
    void appendAddedItemData(std::unique_ptr<KorDSMTreeItemData> data);
    /// Gives the entry, which may be null, to the caller; null when it is not here.
    std::unique_ptr<KorDSMTreeItemData> removeAddedItemData(const KorDSMTreeItemData* data);
    void deleteAddedItems() { m_AddedItems.clear(); }

    /// Deletes all items and resets targets and selections; paths and options stay. Status `kEmptied`.
    void emptyDataStructure();
    /// Resets status, targets and selections only. Status `kNotLoaded`.
    void initDataStructure();

    void setUpdateStatus(eUpdateStatus status) { m_UpdateStatus = status; }
    eUpdateStatus getUpdateStatus() const { return m_UpdateStatus; }

    /// Texts of the entries from the section down to the one that was selected.
    KorArray<KorString>& getSelectedPath(eViewSections s) {
        return m_SelectedPath[static_cast<std::size_t>(s)];
    }

    /// The database and add-in that new items of the section go to.
    eDSN getTargetDatabase(eViewSections s) const { return m_TargetDatabase[static_cast<std::size_t>(s)]; }
    void setTargetDatabase(eViewSections s, eDSN dsn) { m_TargetDatabase[static_cast<std::size_t>(s)] = dsn; }
    eIndex getTargetAddIn(eViewSections s) const { return m_TargetAddIn[static_cast<std::size_t>(s)]; }
    void setTargetAddIn(eViewSections s, eIndex index) { m_TargetAddIn[static_cast<std::size_t>(s)] = index; }

    /// Keys of the selected category or group, and of the selected item.
    int getSelectedCategory(eViewSections s) const { return m_SelectedCategory[static_cast<std::size_t>(s)]; }
    void setSelectedCategory(eViewSections s, int key) {
        m_SelectedCategory[static_cast<std::size_t>(s)] = key;
    }
    int getSelectedItem(eViewSections s) const { return m_SelectedItem[static_cast<std::size_t>(s)]; }
    void setSelectedItem(eViewSections s, int key) { m_SelectedItem[static_cast<std::size_t>(s)] = key; }

    eViewSections getSelectedSection() const { return m_SelectedSection; }
    void setSelectedSection(eViewSections s) { m_SelectedSection = s; }

    /// Number of add-in items below the Standard node of the detail styles section.
    int getNumberOfAddIns();

    /// The options. Setters store the value in the settings at once.
    bool getShowFullTree() const { return m_bShowFullTree; }
    bool getUseFullExpand() const { return m_bUseFullExpand; }
    bool getShowWarning() const { return m_bShowWarning; }
    void setShowFullTree(bool on);
    void setUseFullExpand(bool on);
    void setShowWarning(bool on);

    /// Set when the user applies changes; cleared when the editor opens. The host reads it afterwards.
    static bool m_bApplyWasPressed;

private:
    DETAILSTYLES_HIDDEN void setUpSections();
    DETAILSTYLES_HIDDEN void resetTargets();

    std::vector<std::shared_ptr<KorDSMAddedItemsCollection>> m_AddedItems;
    std::array<KorDsmSectionItem, KorDSMDefines::kNumberOfSections> m_Sections;
    eUpdateStatus m_UpdateStatus = kNotLoaded;
    std::array<KorArray<KorString>, KorDSMDefines::kNumberOfSections> m_SelectedPath;
    std::array<eDSN, KorDSMDefines::kNumberOfSections> m_TargetDatabase{};
    std::array<eIndex, KorDSMDefines::kNumberOfSections> m_TargetAddIn{};
    std::array<int, KorDSMDefines::kNumberOfSections> m_SelectedCategory{};
    std::array<int, KorDSMDefines::kNumberOfSections> m_SelectedItem{};
    eViewSections m_SelectedSection = KorDSMDefines::kViewDetailStyles;
    bool m_bShowFullTree = true;
    bool m_bUseFullExpand = true;
    bool m_bShowWarning = true;
};
