#pragma once

#include "controls/TabContent.h"
#include "model/KorDSMDefines.h"
#include "pages/KorDSMPage.h"

#include <array>
#include <map>
#include <memory>

struct KorDSMFamily;

/// Which group of pages edits which kind of item. All pages of all groups are made once, hidden, and serve
/// every item of their kind as long as the editor is open.
class KorDSMPageRegistry {
public:
    /// Makes the 13 groups with their pages; `owner` is the editor window.
    void createPages(QWidget* owner);
    /// Makes the group for items of one type alone, only to be looked at; `owner` is the window that shows
    /// it.
    void createForLooking(QWidget* owner, KorDSMDefines::eItemType type);

    /// The group for items of this type, or null when such items have no pages.
    TabContent* group(KorDSMDefines::eItemType type) const;
    /// The page with this template number, or null.
    KorDSMPage* page(int templateId) const;
    /// The page of this code, or null; the first one where several have it.
    KorDSMPage* pageOfCode(int code) const;

    /// The lists of every page are filled again at the next show.
    void requestInit();
    /// The same for the pages that consist of forms: they offer names of many kinds.
    void requestFormInit();

    /// Deletes every group with its pages.
    void clear();

private:
    void createGroup(QWidget* owner, const KorDSMFamily& row);

    std::array<std::unique_ptr<TabContent>, KorDSMDefines::kNumberOfItemTypes> m_groups;
    std::map<int, KorDSMPage*> m_pages; // by template number
};
