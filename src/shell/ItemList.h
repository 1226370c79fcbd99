#pragma once

#include "controls/KorImageList.h"
#include "controls/KorTreeModel.h"
#include "model/items/KorDSMDatabaseItem.h"

#include <QObject>

class KorListCtrl;
class KorRowThumbnails;

/// The list at the right: the children of an item without pages.
class ItemList : public QObject {
    Q_OBJECT

public:
    /// `control` is not owned and must outlive the object.
    ItemList(KorListCtrl& control, KorImageListPtr images);

    KorListCtrl& control() const { return m_control; }
    bool isShown() const;
    /// Whether no item is listed.
    bool isBlank() const { return !m_listed; }

    /// Shows the children of the item; of the one that is listed already what was selected stays selected.
    /// Nothing for null.
    void show(KorDSMDatabaseItem* item);
    void hide();
    /// The item that is listed; null for none.
    KorDSMDatabaseItem* listedItem() const;
    void clear();
    /// Nothing may hold on to an entry that goes, nor to the item that it stands for.
    void forget(KorTreeHandle entry);

    /// The items of the rows that are selected; none while the list is not shown.
    std::vector<KorDSMDatabaseItem*> selectedItems() const;
    void selectNothing();
    void deleteSelectedRows();
    /// What a double click on the item's row does.
    void open(KorDSMDatabaseItem& item) { Q_EMIT opened(&item); }
    /// Selects the rows of these items alone; none of them is looked into.
    void select(const std::vector<KorDSMDatabaseItem*>& items);

Q_SIGNALS:
    void selectionChanged();
    /// The user opens the item.
    void opened(KorDSMDatabaseItem* item);
    void deletePressed();
    void menuWanted(const QPoint& globalPosition);

private:
    KorDSMDatabaseItem* itemAt(int row) const;
    void fill(KorDSMDatabaseItem& item);
    std::vector<KorDSMDatabaseItem*> itemsOfSelectedRows() const;

    KorListCtrl& m_control;
    KorRowThumbnails* m_thumbnails;   // the control owns them
    KorTreeHandle m_listed = nullptr; // the entry of the item whose children are shown
};
