#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "services/Prompts.h"
#include "session/KorDSMItemContent.h"
#include "session/KorDSMListContents.h"
#include "shell/KorDSMMainDialog.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <algorithm>

// The list at the right: the children of what is selected in the tree.

namespace {

constexpr int kOpen = 498; // "Open"

} // namespace

void KorDSMMainDialog::setUpList() {
    m_list->setImageList(m_images);
    m_list->setMultiSelection(true);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list, &KorListCtrl::itemActivated, this, &KorDSMMainDialog::openRow);
    connect(m_list, &KorListCtrl::selectionChanged, this, [this] {
        if (m_ready)
            updateCommandStates();
    });
    connect(m_list, &KorListCtrl::deletePressed, this,
            [this] { m_commandActions[static_cast<std::size_t>(eItemCommand::kDelete)]->trigger(); });
    connect(m_list, &QWidget::customContextMenuRequested, this, &KorDSMMainDialog::showListMenu);
    // Who works in the tree means its entry.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
        if (m_ready && now && now == currentTree().control())
            m_list->clearSelection();
    });
}

void KorDSMMainDialog::showList(KorDSMDatabaseItem* item) {
    m_tabs->finishCurrentPage();
    m_tabs->hide();
    m_list->show();
    const KorTreeHandle listed = item ? item->m_hTreeItem : nullptr;
    const bool isSame = listed && listed == m_listedEntry;
    const std::vector<KorDSMDatabaseItem*> selected =
        isSame ? itemsSelectedInList() : std::vector<KorDSMDatabaseItem*>();
    m_listedEntry = listed;
    m_list->setAccessibleName(item ? toQt(item->getDisplayName()) : QString());
    if (!isSame)
        m_list->deleteAllColumns();
    if (item)
        fillList(*item);
    selectInList(selected);
}

void KorDSMMainDialog::fillList(KorDSMDatabaseItem& item) {
    // How much is in a group is known, and the group judged, when its records are there.
    const bool isSingle = item.m_Type == KorDSMDefines::kDatabaseContent && item.children().length() == 1;
    KorDSMItemContent::load(isSingle ? *item.children()[0] : item);
    const KorDSMListContents contents = KorDSMListContents::of(item);
    // Columns that stay keep the order into which the user has sorted them.
    if (m_list->model()->headerData(0, Qt::Horizontal).toString() != toQt(contents.titles.front())) {
        m_list->deleteAllColumns();
        for (std::size_t i = 0; i < contents.titles.size(); ++i)
            m_list->insertColumn(contents.titles[i], i == 0 ? 0 : 120,
                                 contents.numeric[i] ? KorListCtrl::eNumber : KorListCtrl::eText);
    }
    std::vector<KorListRow> rows;
    rows.reserve(contents.rows.size());
    for (const KorDSMListContents::Row& row : contents.rows)
        rows.push_back({row.texts, row.icon, row.item});
    m_list->setItems(std::move(rows));
}

std::vector<KorDSMDatabaseItem*> KorDSMMainDialog::itemsSelectedInList() const {
    std::vector<KorDSMDatabaseItem*> items;
    for (const int row : m_list->selectedRows())
        items.push_back(static_cast<KorDSMDatabaseItem*>(m_list->getItemData(row)));
    return items;
}

// Those of the items that are listed; none of them may be looked into, for they may be gone.
void KorDSMMainDialog::selectInList(const std::vector<KorDSMDatabaseItem*>& items) {
    QItemSelection selection;
    for (const KorDSMDatabaseItem* item : items)
        if (const int row = m_list->findItemData(item); row >= 0)
            selection.select(m_list->model()->index(row, 0), m_list->model()->index(row, 0));
    m_list->selectionModel()->select(selection,
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<KorDSMDatabaseItem*> KorDSMMainDialog::subjects() const {
    std::vector<KorDSMDatabaseItem*> items;
    if (!m_list->isHidden() && m_listedEntry)
        items = itemsSelectedInList();
    if (KorDSMDatabaseItem* item = items.empty() ? currentItem() : nullptr)
        items.push_back(item);
    return items;
}

KorDSMDatabaseItem* KorDSMMainDialog::subject() const {
    const std::vector<KorDSMDatabaseItem*> items = subjects();
    return items.size() == 1 ? items.front() : nullptr;
}

void KorDSMMainDialog::openRow(int row) {
    auto* item = static_cast<KorDSMDatabaseItem*>(m_list->getItemData(row));
    if (item && !KorDSMBusy::isBusy())
        goToItem(*item);
}

void KorDSMMainDialog::showListMenu(const QPoint& position) {
    if (KorDSMBusy::isBusy())
        return;
    QMenu menu(this);
    bool opens = false;
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.size() == 1) {
        auto* open = menu.addAction(toQt(Prompts::dsm(kOpen)));
        open->setShortcut(Qt::Key_Return);
        connect(open, &QAction::triggered, this, [&opens] { opens = true; });
        menu.setDefaultAction(open);
        menu.addSeparator();
    }
    addItemCommands(menu);
    {
        const KorDSMBusy busy; // as for the menu of the tree
        menu.exec(m_list->viewport()->mapToGlobal(position));
    }
    if (opens)
        openRow(rows.front());
}
