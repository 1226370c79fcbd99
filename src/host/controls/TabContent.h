#pragma once

#include "base/KorString.h"
#include "controls/KorEntryData.h"

#include <QObject>
#include <QPointer>

#include <vector>

class KorTabPage;

/// A group of pages that edit one kind of data, shown together by a KorTabCtrl. It owns its pages, and
/// remembers under its key and name which of them was last active.
class TabContent : public QObject {
    Q_OBJECT

public:
    TabContent(const KorString& key, const KorString& name);
    /// Deletes the pages that still live; their windows may have gone with the tab control before.
    ~TabContent() override;

    const KorString& name() const { return m_name; }

    /// Appends a page, which the group owns from now on. Null is ignored.
    void addPage(KorTabPage* page);
    /// Creates the windows of all pages, hidden, and brings the last active page back.
    void createPages();

    int pageCount() const { return static_cast<int>(m_pages.size()); }
    /// The page at an index, null when there is none.
    KorTabPage* page(int index) const;

    /// Gives data to the page at `index`, or to all pages when it is -1. When a
    /// page concerned is being shown, it is left with the old data before, and shown with the new data
    /// after. Data that a left page had is never touched, so it may be gone.
    void setPageData(const KorEntryData& data, int index);

    /// The page whose tab is or was last active.
    int currentIndex() const { return m_current; }
    KorTabPage* currentPage() const { return page(m_current); }
    /// Makes another page current. When the group is shown, the page before is left first.
    void setCurrentIndex(int index);

    /// Whether a tab control shows this group (its current page may have been finished meanwhile).
    bool isShown() const { return m_shown; }

Q_SIGNALS:
    void currentChanged(int index);

private:
    friend class KorTabCtrl;
    /// Shows or leaves the current page; both do nothing when that is so already.
    void enter();
    void leave();

    KorString m_settingName;
    KorString m_name;
    std::vector<QPointer<KorTabPage>> m_pages;
    int m_current = 0;
    bool m_shown = false;
};
