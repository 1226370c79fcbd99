#include "controls/TabContent.h"

#include "controls/KorLayoutStore.h"
#include "controls/KorTabPage.h"

#include <charconv>

TabContent::TabContent(const KorString& key, const KorString& name)
    : m_settingName(key + "/" + name), m_name(name) {}

TabContent::~TabContent() {
    for (const QPointer<KorTabPage>& page : m_pages)
        delete page.data();
}

void TabContent::addPage(KorTabPage* page) {
    if (page)
        m_pages.emplace_back(page);
}

void TabContent::createPages() {
    for (const QPointer<KorTabPage>& page : m_pages)
        page->create();
    const std::string stored = KorLayoutStore::read(m_settingName).toStdString();
    int index = 0;
    std::from_chars(stored.data(), stored.data() + stored.size(), index);
    m_current = index >= 0 && index < pageCount() ? index : 0;
}

KorTabPage* TabContent::page(int index) const {
    return index >= 0 && index < pageCount() ? m_pages[static_cast<std::size_t>(index)].data() : nullptr;
}

void TabContent::setPageData(const KorEntryData& data, int index) {
    KorTabPage* shown = currentPage();
    const bool again = shown && shown->isActive() && (index < 0 || index == m_current);
    if (again)
        leave();
    for (int at = 0; at < pageCount(); ++at)
        if (KorTabPage* target = page(at); target && (index < 0 || index == at))
            target->setData(data);
    if (again)
        enter();
}

void TabContent::setCurrentIndex(int index) {
    if (index == m_current || !page(index))
        return;
    leave();
    m_current = index;
    KorLayoutStore::write(m_settingName, KorString::number(index));
    Q_EMIT currentChanged(index);
    if (m_shown)
        enter();
}

void TabContent::enter() {
    if (KorTabPage* shown = currentPage())
        shown->enter();
}

void TabContent::leave() {
    if (KorTabPage* shown = currentPage())
        shown->leave();
}
