#pragma once

#include "controls/KorTreeModel.h"

#include <QTreeView>

/// A tree of entries with text, icon and the caller's data, single selection.
///
/// Entries are named by handles, which stay valid until the entry is deleted. A null handle as a parent
/// means the top level; any other operation on a null handle reports the error and does nothing.
/// The first top-level entry is what callers call the tree's root.
class KorTreeCtrl : public QTreeView {
    Q_OBJECT

public:
    explicit KorTreeCtrl(QWidget* parent = nullptr);
    /// A view of entries that live elsewhere; `model` must outlive it.
    KorTreeCtrl(KorTreeModel* model, QWidget* parent);
    ~KorTreeCtrl() override;

    /// The icons that the entries' image indices mean. The list can be shared and can grow later.
    void setImageList(KorImageListPtr images);

    /// Stands for "before all siblings" where an entry to insert after is asked for.
    static KorTreeHandle first();

    /// Inserts an entry under `parent`, after its child `after` (null: at the end). Returns its handle.
    KorTreeHandle insertItem(const KorString& text, int image = -1, KorTreeHandle parent = nullptr,
                             const KorEntryData& data = {}, KorTreeHandle after = nullptr);
    /// Appends many entries under `parent` in one step. Returns the first of them (the others follow as
    /// its siblings), or null when `items` is empty.
    KorTreeHandle insertItems(KorTreeHandle parent, const std::vector<KorTreeItem>& items);
    /// Deletes an entry and all below it. When the selection was in there, it moves to the next sibling,
    /// else the previous one, else the parent, and is announced after the deletion.
    void deleteItem(KorTreeHandle entry);
    /// Deletes all entries below `parent`; a selection in there moves to `parent`.
    void deleteChildren(KorTreeHandle parent);
    /// Deletes everything. When something was selected, `entrySelected(null)` follows.
    void deleteAll();

    /// The first top-level entry, null in an empty tree.
    KorTreeHandle getRoot() const;
    /// The entry above, null for a top-level entry.
    KorTreeHandle getParentItem(KorTreeHandle entry) const;
    /// The first child, null when there is none. Does not make children on demand.
    KorTreeHandle getChildItem(KorTreeHandle entry) const;
    KorTreeHandle getNextSiblingItem(KorTreeHandle entry) const;
    /// Number of children made so far; with null, of the top level.
    int childCount(KorTreeHandle parent) const;

    KorString getItemText(KorTreeHandle entry) const;
    void setItemText(KorTreeHandle entry, const KorString& text);
    KorEntryData getItemData(KorTreeHandle entry) const;
    void setItemData(KorTreeHandle entry, const KorEntryData& data);

    /// The entry can be opened although it has no children yet: `expanding` asks for them once. An entry
    /// that has none after that shows as a leaf.
    void setPlaceholder(KorTreeHandle entry, bool placeholder);
    bool isPlaceholder(KorTreeHandle entry) const;

    using QTreeView::collapse;
    using QTreeView::expand;
    using QTreeView::isExpanded;
    /// Opens an entry; its children on demand exist when this returns, even if an entry above is closed.
    void expand(KorTreeHandle entry);
    void collapse(KorTreeHandle entry);
    bool isExpanded(KorTreeHandle entry) const;
    /// Opens an entry and everything below it, making all children on demand.
    void expandBranch(KorTreeHandle entry);

    /// Shows only entries for which `isShown` answers yes, with what is above them as far as it answers yes
    /// there too; null shows everything again, opened as it was before the filter. What is selected stays
    /// selected only while it is in sight.
    void setFilter(const std::function<bool(const KorTreeEntry&)>& isShown);
    /// Whether a filter keeps the entry out of sight.
    bool isHidden(KorTreeHandle entry) const;

    /// Selects an entry, opens what is above it and scrolls it into view; null takes the selection away.
    /// `entrySelected` comes before this returns, unless the entry was selected already.
    void selectItem(KorTreeHandle entry);
    KorTreeHandle selectedItem() const;
    void ensureVisible(KorTreeHandle entry);

    /// Position of the entry in pre-order among all entries made so far (the first top-level entry is 0),
    /// -1 for null.
    int GetItemIndex(KorTreeHandle entry) const;
    /// The entry at a pre-order position, null when there is none.
    KorTreeHandle GetItemAt(int index) const;

    /// Whether entries can be dragged onto others. Off at first.
    void setDragAllowed(bool allowed);
    bool isDragAllowed() const { return m_dragAllowed; }

Q_SIGNALS:
    /// The entry opens, by the user or the program; made children are shown with it. Comes again at each
    /// opening, `isPlaceholder` tells whether children are asked for.
    void expanding(KorTreeHandle entry);
    void entrySelected(KorTreeHandle entry);
    /// Double click or Enter on an entry.
    void itemActivated(KorTreeHandle entry);
    /// Right click or the menu key; `entry` is null on empty ground.
    void contextMenuRequested(KorTreeHandle entry, const QPoint& globalPosition);
    /// While dragging: set `*accept` when `source` may be dropped on `target`. Nobody answering means no.
    void dropQuery(KorTreeHandle source, KorTreeHandle target, bool* accept);
    /// `source` was dropped on `target`, which `dropQuery` had accepted. The tree moves nothing itself.
    void dropRequested(KorTreeHandle source, KorTreeHandle target);

protected:
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void init();
    void demandChildren(KorTreeHandle entry);
    void onExpanded(const QModelIndex& index);
    KorTreeHandle shownSibling(KorTreeHandle entry, int step) const;
    void rememberOpen();
    void restoreOpen();
    bool isInBranch(KorTreeHandle entry, KorTreeHandle branch) const;
    bool acceptsDrop(const QDropEvent& event, KorTreeHandle& target);
    template <typename Remove>
    void removeKeepingSelection(bool selectionGoes, KorTreeHandle heir, Remove remove);

    KorTreeModel* m_model;
    KorTreeHandle m_dragSource = nullptr;
    KorTreeHandle m_opening = nullptr;
    bool m_muted = false;
    bool m_dragAllowed = false;
};
