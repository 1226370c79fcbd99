#pragma once

#include "base/KorString.h"
#include "base/KorTreeHandle.h"
#include "controls/KorEntryData.h"
#include "controls/KorImageList.h"

#include <QAbstractItemModel>

#include <functional>
#include <memory>
#include <vector>

/// What a new tree entry shows and carries.
struct KorTreeItem {
    KorString text;
    int image = -1; ///< Index in the image list, -1 for none.
    KorEntryData data = {};
    bool placeholder = false; ///< Children are made when the entry is first opened.
    bool hidden = false;      ///< Kept out of sight by the filter that is set; without one it has no effect.
};

/// One entry of a KorTreeModel. Texts are shared with the records they come from.
struct KorTreeEntry {
    KorString text;
    KorEntryData data;
    KorTreeEntry* parent = nullptr;
    std::vector<std::unique_ptr<KorTreeEntry>> children;
    std::vector<KorTreeEntry*> shown; // the children in sight; kept only while a filter is set
    int row = 0;
    int shownRow = 0; // among `shown`, -1 out of sight
    int image = -1;
    bool placeholder = false;
    bool selectable = true;
    bool wasOpen = false; // before a filter was set
};

/// The entries behind tree controls and tree combos. Entries without a parent are top-level entries;
/// wherever a parent is asked for, null stands for the invisible owner of these.
///
/// A filter keeps entries out of sight: views don't see them, while handles and everything that is asked by
/// handles go on as without it.
class KorTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    void setImageList(KorImageListPtr images) { m_images = std::move(images); }

    /// Inserts one entry before row `row` of `parent`; a row outside the children appends.
    KorTreeHandle insert(KorTreeHandle parent, int row, const KorTreeItem& item);
    /// Appends many entries in one step. Returns the first of them, null when `items` is empty.
    KorTreeHandle append(KorTreeHandle parent, const std::vector<KorTreeItem>& items);
    /// Deletes the entry with all entries below it.
    void remove(KorTreeHandle entry);
    /// Deletes all entries below `parent`, which stops being a placeholder.
    void removeChildren(KorTreeHandle parent);

    void setText(KorTreeHandle entry, const KorString& text);
    /// Whether the entry shows that it can be opened although it has no children yet.
    void setPlaceholder(KorTreeHandle entry, bool placeholder);
    /// Shows only entries for which `isShown` answers yes; below one that is hidden nothing is shown. Null
    /// shows everything. Entries inserted later say themselves whether they are hidden.
    void setFilter(const std::function<bool(const KorTreeEntry&)>& isShown);
    bool isFiltered() const { return m_isFiltered; }
    bool isHidden(KorTreeHandle entry) const { return m_isFiltered && entry->shownRow < 0; }

    /// Moves come from dragging; off at first.
    void setDragAllowed(bool allowed) { m_dragAllowed = allowed; }

    int childCount(KorTreeHandle parent) const;
    /// The child at `row`, null when there is none.
    KorTreeHandle childAt(KorTreeHandle parent, int row) const;
    /// The neighbour `step` rows further among the siblings, null when there is none.
    KorTreeHandle sibling(KorTreeHandle entry, int step) const;
    /// The entry above, null for a top-level entry.
    KorTreeHandle parentOf(KorTreeHandle entry) const;
    /// The entry after `entry` in pre-order (children before siblings); null starts, null ends.
    KorTreeHandle nextInOrder(KorTreeHandle entry) const;
    /// The first entry in pre-order after `entry` and all below it, null when there is none.
    KorTreeHandle nextOutside(KorTreeHandle entry) const;
    /// The entry before `entry` in pre-order; null starts at the last, null ends.
    KorTreeHandle previousInOrder(KorTreeHandle entry) const;

    /// Invalid for an entry out of sight.
    QModelIndex indexOf(KorTreeHandle entry) const;
    /// Whether the entry is one of this model's, not of another tree.
    bool owns(KorTreeHandle entry) const;
    static KorTreeHandle entryOf(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

Q_SIGNALS:
    /// An entry without children can be opened now, or no longer: views lay their lines out anew.
    void placeholderChanged();

private:
    const KorTreeEntry& node(KorTreeHandle parent) const { return parent ? *parent : m_root; }
    KorTreeEntry& node(KorTreeHandle parent) { return parent ? *parent : m_root; }
    std::unique_ptr<KorTreeEntry> make(KorTreeHandle parent, int row, const KorTreeItem& item);
    void filterBelow(KorTreeEntry& entry, const std::function<bool(const KorTreeEntry&)>& isShown);
    bool isInSight(const KorTreeEntry& entry) const {
        return !m_isFiltered || &entry == &m_root || entry.shownRow >= 0;
    }
    int shownCount(const KorTreeEntry& parent) const;
    int firstShownFrom(const KorTreeEntry& parent, int row) const;
    void renumber(KorTreeEntry& parent, int row, int shownRow);

    KorTreeEntry m_root;
    KorImageListPtr m_images;
    bool m_isFiltered = false;
    bool m_dragAllowed = false;
};
