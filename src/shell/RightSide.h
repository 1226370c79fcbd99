#pragma once

#include "session/KorDSMItemCommands.h"
#include "shell/ItemList.h"
#include "shell/KorDSMPageRegistry.h"

class KorTabCtrl;

/// The right side of the window: the pages of the selected item, or the list of its children.
class RightSide : public QObject {
    Q_OBJECT

public:
    /// In so many pixels any page is seen without scrolling sideways, with texts of the usual size.
    static constexpr int kRoomOfPages = 450;

    /// The controls are not owned and must outlive the object.
    RightSide(KorTabCtrl& tabs, KorListCtrl& list, KorImageListPtr images);
    /// Deletes all pages.
    ~RightSide() override;

    KorDSMPageRegistry& pages() { return m_pages; }
    ItemList& list() { return m_list; }
    const ItemList& list() const { return m_list; }

    /// Shows what belongs to the item.
    void show(KorDSMDatabaseItem& item);
    /// Shows the list of the item's children; an empty one for null.
    void showList(KorDSMDatabaseItem* item);
    /// Items came, went or have other names.
    void refreshList();
    /// Whether nothing is shown.
    bool isBlank() const;

    /// Lets the page that is shown store what was typed.
    static void finishEditing();
    /// Drops what was typed.
    static void dropEdits();
    /// Stores what was typed and leaves the page; it stays in sight.
    void leavePage();
    /// The same where the page's item may go or stand elsewhere next: nothing is shown after it.
    void letGo();
    /// Shows the page again that was left, with the data that there is now.
    void resume();
    /// Nothing may hold on to an entry that goes, nor to the item that it stands for.
    void forget(KorTreeHandle entry);

    /// Gives the focus to the field that shows the cell, on whichever page it is. Returns whether there is
    /// one.
    bool focusField(RowRef row, int column);
    /// Gives the focus to what can have it first on the page that is shown.
    void focusPage();

    /// Template number of the page that is shown; 0 where there is none.
    int shownPage() const;
    /// Shows the page of this template number, where it belongs to the item that is shown.
    void showPage(int templateId);

    /// Marks the tabs of pages that show something that is not stored yet.
    void markPages();
    /// Whether the pages beside the one that is shown are refreshed at their next show.
    void requestRefreshOfOthers(bool needed);
    /// Tells the pages that list records of the kind what their names are now.
    void tellNames(const KorDSMItemCommands::ListNotice& notice);

private:
    void showPages(KorDSMDefines::eItemType group, KorDSMDatabaseItem& item);
    std::vector<KorDSMPage*> shownPages() const;

    KorTabCtrl& m_tabs;
    ItemList m_list;
    KorDSMPageRegistry m_pages;
};
