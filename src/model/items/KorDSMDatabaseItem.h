#pragma once

#include "base/KorArray.h"
#include "base/KorTreeHandle.h"
#include "model/KorDSMDefines.h"
#include "model/items/KorDSMItemList.h"
#include "records/KorDSNDefinitions.h"
#include "records/TableTypes.h"

#include <memory>
#include <utility>
#include <vector>

struct KorDSMFamily;
struct StructRecord;

/// Root of everything that the editor shows in its trees: a record of a style database, or a node that
/// groups such records. An item owns its children; it knows its entry in the tree only as an opaque handle
/// and changes it through messages to the main dialog.
class KorDSMDatabaseItem {
public:
    /// Whether the first of two siblings stands before the second.
    using ComesBefore = bool (*)(const KorDSMDatabaseItem&, const KorDSMDatabaseItem&);

    /// A node without a record, which is expanded at once where there is nothing to be made below it.
    explicit KorDSMDatabaseItem(KorDSMDefines::eItemType type = KorDSMDefines::kNoType, std::int32_t icon = 0,
                                bool isExpanded = true)
        : m_Type(type), m_IconIndex(icon), m_bExpanded(isExpanded) {}
    /// An item of a family: with its type, icon and first state.
    explicit KorDSMDatabaseItem(const KorDSMFamily& family);
    virtual ~KorDSMDatabaseItem();
    KorDSMDatabaseItem(const KorDSMDatabaseItem&) = delete;
    KorDSMDatabaseItem& operator=(const KorDSMDatabaseItem&) = delete;

    KorDSMDefines::eItemType type() const { return m_Type; }
    /// Index in the table of icons.
    std::int32_t icon() const { return m_IconIndex; }
    /// Null for sections, and for items that nobody has taken over.
    KorDSMDatabaseItem* parent() const { return m_pParent; }
    /// The item's entry in the tree, null while the item is not shown. The tree says which one it is.
    KorTreeHandle entry() const { return m_hTreeItem; }
    void setEntry(KorTreeHandle entry) { m_hTreeItem = entry; }
    /// True when the item's dependent children are there, or there are none to show. While it is false the
    /// entry has the placeholder child.
    bool isExpanded() const { return m_bExpanded; }
    /// What hangs on the item was made.
    void setExpanded() { m_bExpanded = true; }

    /// Whether both items lie under the same add-in; items outside any add-in are equal. Record items
    /// compare their records first.
    virtual bool isEqual(const KorDSMDatabaseItem& other) const;
    /// A copy of the item alone, or null where items of this kind are not copied.
    virtual std::unique_ptr<KorDSMDatabaseItem> clone() const { return nullptr; }
    /// Stores a name in the record, for kinds whose record carries one.
    virtual void setName(KorString) {}

    /// Text of the item's tree entry.
    virtual KorString getDisplayName() const { return {}; }
    /// The record, or null for nodes without one. Of the type that `tableType` says.
    virtual const StructRecord* record() const { return nullptr; }
    virtual eTableType tableType() const { return kNoTable; }
    /// Replaces the record by a copy of `record`, which must be of the same type: drops the children that
    /// hang on the old one, sets the entry's text, and leaves the equal items.
    virtual void assignRecord(const StructRecord&) {}
    /// Takes a changed copy of the same record over, without touching children or equal items.
    virtual void updateRecord(const StructRecord&) {}
    std::int32_t recordKey() const;

    /// Takes the child over as the last one, sets its parent, and returns it.
    template <typename Item>
    Item& addChild(std::unique_ptr<Item> child) {
        Item& added = *child;
        makeChildrenLeft();
        insertChild(m_Children.end(), std::move(child));
        return added;
    }
    /// The same at the place of its order among siblings that are in this order.
    KorDSMDatabaseItem& insertChild(std::unique_ptr<KorDSMDatabaseItem> child, ComesBefore comesBefore);
    /// Gives the child, which keeps its parent pointer, to the caller; null for one that is none.
    std::unique_ptr<KorDSMDatabaseItem> releaseChild(const KorDSMDatabaseItem& child);
    void deleteChildren() {
        m_Children.clear();
        m_bChildrenLeft = false;
    }
    /// Room for `count` children.
    void reserveChildren(int count) { m_Children.reserve(static_cast<std::size_t>(count)); }
    /// Brings the children into this order; those of one place keep theirs.
    void sortChildren(ComesBefore comesBefore);
    /// The children. Those that were left are made for whoever asks.
    KorDSMItemList children() const {
        makeChildrenLeft();
        return madeChildren();
    }
    /// The children as far as they were made: one that was left has nothing that could be out of date.
    KorDSMItemList madeChildren() const { return KorDSMItemList(m_Children); }
    /// Whether children are left to be made when they are asked for.
    bool hasChildrenLeft() const { return m_bChildrenLeft; }
    /// The rows that the children left will show, in their order. Valid until the table changes.
    virtual std::vector<const StructRecord*> rowsOfChildrenLeft() const { return {}; }
    /// How many children there are, made or left.
    int childCount() const {
        return m_bChildrenLeft ? static_cast<int>(rowsOfChildrenLeft().size()) : madeChildren().length();
    }

    /// The nearest of this item and its ancestors that has this type, or null.
    const KorDSMDatabaseItem* ancestor(KorDSMDefines::eItemType type) const;
    KorDSMDatabaseItem* ancestor(KorDSMDefines::eItemType type) {
        return const_cast<KorDSMDatabaseItem*>(std::as_const(*this).ancestor(type));
    }
    /// Add-in index of the add-in content node above, or its own; -1 without one.
    virtual int addInIndex() const { return m_pParent ? m_pParent->addInIndex() : -1; }

    /// Makes new item data and hands it, with the entry handle, to the main dialog.
    void refreshTreeItemData();

    /// Deletes the children that hang on the record, with their entries, and closes the entry: they are made
    /// anew when it is opened. Does nothing while there are none.
    void dropDependents();

    /// Links both items as showing an equal record, if they are not linked yet.
    void linkEqualItem(KorDSMDatabaseItem& other);
    /// Leaves the lists of all equal items and empties the own one.
    void unlinkEqualItems();
    const KorArray<KorDSMDatabaseItem*>& equalItems() const;
    /// The equal items and, last, this one: all that show its record.
    std::vector<KorDSMDatabaseItem*> itemsOfRecord();

protected:
    void setType(KorDSMDefines::eItemType type) { m_Type = type; }
    /// What every replaced record brings with it: see `assignRecord`.
    void recordReplaced();
    /// Called when the children that hang on the record are gone.
    virtual void dependentsDropped() {}
    /// The children are made when they are asked for, by `makeChildren`; there must be none yet.
    void leaveChildren() { m_bChildrenLeft = true; }
    virtual void makeChildren() {}

private:
    void makeChildrenLeft() const {
        if (m_bChildrenLeft) {
            m_bChildrenLeft = false;
            const_cast<KorDSMDatabaseItem*>(this)->makeChildren();
        }
    }
    void addEqualItem(KorDSMDatabaseItem& other);
    void insertChild(KorDSMItemList::Owned::iterator place, std::unique_ptr<KorDSMDatabaseItem> child);

    // Tens of thousands of items are in memory at a time: the order of the members leaves no gaps.
    KorTreeHandle m_hTreeItem = nullptr;
    KorDSMDatabaseItem* m_pParent = nullptr;
    KorDSMDefines::eItemType m_Type = KorDSMDefines::kNoType;
    std::int32_t m_IconIndex = 0;
    bool m_bExpanded = true;
    mutable bool m_bChildrenLeft = false;
    KorDSMItemList::Owned m_Children;
    std::unique_ptr<KorArray<KorDSMDatabaseItem*>> m_EqualItems; // null while there are none
};
