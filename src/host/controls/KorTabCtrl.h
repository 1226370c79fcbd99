#pragma once

#include "controls/TabContent.h"

#include <QWidget>

class QScrollArea;
class QStackedWidget;
class QTabBar;

/// Shows the pages of one group at a time, one tab each. A page larger than the control scrolls.
/// Which page is told what, and in which order, stands at KorTabPage.
class KorTabCtrl : public QWidget {
    Q_OBJECT

public:
    explicit KorTabCtrl(QWidget* parent = nullptr);
    ~KorTabCtrl() override;

    /// Shows a group, or nothing for null. The page shown before is left first. A group that is shown
    /// already and whose page was finished meanwhile is shown anew. The group must outlive its showing.
    void setCurrentContent(TabContent* content);
    TabContent* currentContent() const { return m_content; }
    /// The page that is visible, null when there is none.
    KorTabPage* currentPage() const;

    /// Lets the shown page store what the user typed and leaves it. It stays visible; `setCurrentContent`
    /// or `resumeCurrentPage` shows it again.
    void finishCurrentPage();
    /// Shows the page again after `finishCurrentPage`, with the data that it has now.
    void resumeCurrentPage();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void clear();
    void onTabChosen(int index);
    void fillBar();
    void updateCaption(int index);
    void showPage();
    QScrollArea* areaOf(KorTabPage* page);

    QTabBar* m_bar;
    QStackedWidget* m_stack;
    QPointer<TabContent> m_content;
    bool m_filling = false;
};
