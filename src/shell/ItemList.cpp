#include "shell/ItemList.h"

#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorRowThumbnails.h"
#include "session/KorDSMItemContent.h"
#include "session/KorDSMListContents.h"
#include "shell/KorDSMSectionTree.h"
#include "shell/StyleThumbnails.h"

#include <algorithm>

ItemList::ItemList(KorListCtrl& control, KorImageListPtr images) : m_control(control) {
    StyleThumbnails::ofSession();
    m_thumbnails = new KorRowThumbnails(
        control, [this](const QModelIndex& row) { return StyleThumbnails::subjectOf(itemAt(row.row())); });
    m_control.setImageList(std::move(images));
    m_control.setMultiSelection(true);
    m_control.keepSorting("ItemListSorting");
    m_control.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&m_control, &KorListCtrl::itemActivated, this, [this](int row) {
        if (KorDSMDatabaseItem* item = itemAt(row))
            Q_EMIT opened(item);
    });
    connect(&m_control, &KorListCtrl::rowsSelected, this, &ItemList::selectionChanged);
    connect(&m_control, &KorListCtrl::deletePressed, this, &ItemList::deletePressed);
    connect(&m_control, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        Q_EMIT menuWanted(m_control.viewport()->mapToGlobal(position));
    });
}

bool ItemList::isShown() const {
    return !m_control.isHidden();
}

void ItemList::show(KorDSMDatabaseItem* item) {
    m_control.show();
    const KorTreeHandle listed = item ? item->entry() : nullptr;
    const bool isSame = listed && listed == m_listed;
    const std::vector<KorDSMDatabaseItem*> selected =
        isSame ? itemsOfSelectedRows() : std::vector<KorDSMDatabaseItem*>();
    m_listed = listed;
    m_control.setAccessibleName(item ? toQt(item->getDisplayName()) : QString());
    if (!isSame)
        m_control.deleteAllColumns();
    if (item)
        fill(*item);
    select(selected);
}

void ItemList::hide() {
    m_control.hide();
}

KorDSMDatabaseItem* ItemList::listedItem() const {
    return KorDSMSectionTree::itemOf(m_listed);
}

void ItemList::clear() {
    m_control.setItems({});
}

void ItemList::forget(KorTreeHandle entry) {
    if (m_listed != entry)
        return;
    m_listed = nullptr;
    clear();
}

void ItemList::fill(KorDSMDatabaseItem& item) {
    // How much is in a group is known, and the group judged, when its records are there.
    const bool isSingle = item.type() == KorDSMDefines::kDatabaseContent && item.children().length() == 1;
    KorDSMItemContent::load(isSingle ? *item.children()[0] : item);
    const KorDSMListContents contents = KorDSMListContents::of(item);
    // Columns that stay keep the order into which the user has sorted them.
    if (m_control.model()->headerData(0, Qt::Horizontal).toString() != toQt(contents.titles.front())) {
        m_control.deleteAllColumns();
        for (std::size_t i = 0; i < contents.titles.size(); ++i)
            m_control.insertColumn(contents.titles[i], i == 0 ? 0 : 120,
                                   contents.numeric[i] ? KorListCtrl::eNumber : KorListCtrl::eText);
        m_control.restoreSorting();
    }
    std::vector<KorListRow> rows;
    rows.reserve(contents.rows.size());
    for (const KorDSMListContents::Row& row : contents.rows)
        rows.push_back({row.texts, row.icon, row.item});
    m_thumbnails->setWanted(std::ranges::any_of(
        item.children(), [](const auto* child) { return bool(StyleThumbnails::subjectOf(child)); }));
    m_control.setItems(std::move(rows));
    m_control.setTextWhenEmpty(contents.whenEmpty);
}

KorDSMDatabaseItem* ItemList::itemAt(int row) const {
    return m_control.getItemData(row).as<KorDSMDatabaseItem>();
}

std::vector<KorDSMDatabaseItem*> ItemList::itemsOfSelectedRows() const {
    std::vector<KorDSMDatabaseItem*> items;
    for (const int row : m_control.selectedRows())
        items.push_back(itemAt(row));
    return items;
}

std::vector<KorDSMDatabaseItem*> ItemList::selectedItems() const {
    return isShown() && m_listed ? itemsOfSelectedRows() : std::vector<KorDSMDatabaseItem*>();
}

// They may be gone.
void ItemList::select(const std::vector<KorDSMDatabaseItem*>& items) {
    QItemSelection selection;
    for (const KorDSMDatabaseItem* item : items)
        if (const int row = m_control.findItemData(item); row >= 0)
            selection.select(m_control.model()->index(row, 0), m_control.model()->index(row, 0));
    m_control.selectionModel()->select(selection,
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ItemList::selectNothing() {
    m_control.clearSelection();
}

void ItemList::deleteSelectedRows() {
    m_control.deleteSelectedItems();
}
