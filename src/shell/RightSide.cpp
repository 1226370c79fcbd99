#include "shell/RightSide.h"

#include "controls/KorTabCtrl.h"
#include "controls/TabStops.h"
#include "controls/VELComboTree.h"
#include "model/items/KorDsmItems.h"
#include "shell/KorDSMSectionTree.h"

using namespace KorDSMDefines;

RightSide::RightSide(KorTabCtrl& tabs, KorListCtrl& list, KorImageListPtr images)
    : m_tabs(tabs), m_list(list, std::move(images)) {
    m_tabs.hide();
}

RightSide::~RightSide() {
    m_pages.clear();
}

namespace {

// The type whose pages serve the item.
eItemType groupOf(const KorDSMDatabaseItem& item) {
    const bool isSecond = item.type() == kAnnotationArrangement && item.record() &&
                          static_cast<const KorDsmAnnotationArrangementItem&>(item).usesNewArranger();
    return isSecond ? kSecondArrangerControl : item.type();
}

} // namespace

void RightSide::show(KorDSMDatabaseItem& item) {
    const eItemType group = groupOf(item);
    if (group == kAnnotationArrangement && !item.record()) {
        m_tabs.hide();
        m_list.hide();
        return;
    }
    if (group < kNumberOfItemTypes && m_pages.group(group))
        showPages(group, item);
    else
        showList(&item);
}

void RightSide::showPages(eItemType group, KorDSMDatabaseItem& item) {
    leavePage();
    TabContent* content = m_pages.group(group);
    content->setPageData(&item, -1);
    m_list.hide();
    m_tabs.show();
    m_tabs.setCurrentContent(content);
    markPages();
}

void RightSide::showList(KorDSMDatabaseItem* item) {
    leavePage();
    m_tabs.hide();
    m_list.show(item);
}

void RightSide::refreshList() {
    if (m_list.isShown())
        showList(m_list.listedItem());
}

bool RightSide::isBlank() const {
    return m_list.isShown() ? m_list.isBlank() : !m_tabs.currentPage();
}

void RightSide::finishEditing() {
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->finishEditing();
}

void RightSide::dropEdits() {
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->dropEdits();
}

void RightSide::leavePage() {
    m_tabs.finishCurrentPage();
}

void RightSide::letGo() {
    m_tabs.finishCurrentPage();
    m_tabs.setCurrentContent(nullptr);
}

void RightSide::resume() {
    const KorTabPage* page = m_tabs.currentPage();
    auto* item = page && page->getData() ? page->getData().as<KorDSMDatabaseItem>() : nullptr;
    if (item && m_pages.group(groupOf(*item)) != m_tabs.currentContent())
        return show(*item);
    m_tabs.resumeCurrentPage();
}

void RightSide::forget(KorTreeHandle entry) {
    m_list.forget(entry);
    const KorTabPage* page = m_tabs.currentPage();
    if (!page || !page->getData() ||
        page->getData().as<KorDSMDatabaseItem>() != KorDSMSectionTree::itemOf(entry))
        return;
    TabContent* content = m_tabs.currentContent();
    m_tabs.setCurrentContent(nullptr);
    content->setPageData(nullptr, -1);
}

// Of the group that is shown.
std::vector<KorDSMPage*> RightSide::shownPages() const {
    std::vector<KorDSMPage*> pages;
    const TabContent* group = m_tabs.currentContent();
    for (int i = 0; group && i < group->pageCount(); ++i)
        if (auto* page = qobject_cast<KorDSMPage*>(group->page(i)))
            pages.push_back(page);
    return pages;
}

bool RightSide::focusField(RowRef row, int column) {
    TabContent* group = m_tabs.currentContent();
    const auto focusOn = [&](int index) {
        auto* page = qobject_cast<KorDSMPage*>(group->page(index));
        return page && page->focusField(row, column);
    };
    if (!group || focusOn(group->currentIndex()))
        return group != nullptr;
    // Only a page that was shown knows all that it shows.
    const int before = group->currentIndex();
    m_tabs.setUpdatesEnabled(false);
    bool found = false;
    for (int i = 0; i < group->pageCount() && !found; ++i) {
        if (i == before)
            continue;
        group->setCurrentIndex(i);
        found = focusOn(i);
    }
    if (!found)
        group->setCurrentIndex(before);
    m_tabs.setUpdatesEnabled(true);
    return found;
}

void RightSide::focusPage() {
    KorTabPage* page = m_tabs.currentPage();
    const QWidgetList stops = page ? TabStops::in({page}) : QWidgetList();
    if (!stops.isEmpty())
        stops.first()->setFocus(Qt::ShortcutFocusReason);
}

int RightSide::shownPage() const {
    const KorTabPage* page = m_tabs.currentPage();
    return page ? page->templateId() : 0;
}

void RightSide::showPage(int templateId) {
    TabContent* group = m_tabs.currentContent();
    for (int i = 0; group && i < group->pageCount(); ++i)
        if (group->page(i)->templateId() == templateId)
            return group->setCurrentIndex(i);
}

void RightSide::markPages() {
    for (KorDSMPage* page : shownPages())
        page->updateMark();
}

void RightSide::requestRefreshOfOthers(bool needed) {
    const TabContent* group = m_tabs.currentContent();
    for (KorDSMPage* page : shownPages())
        if (page != group->page(group->currentIndex()))
            page->requestRefresh(needed);
}

void RightSide::tellNames(const KorDSMItemCommands::ListNotice& notice) {
    m_pages.requestFormInit();
    DsmListChanged message;
    message.senderPageCode = notice.senderPageCode;
    message.action = notice.action;
    message.name = notice.path(VELComboTree::GetPathDelimiter());
    for (const int receiver : notice.receivers)
        if (KorDSMPage* page = m_pages.pageOfCode(receiver))
            page->onMessage(message);
}
