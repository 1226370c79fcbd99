#include "model/items/KorDSMDatabaseItem.h"

#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "records/StructRecord.h"

#include <algorithm>

KorDSMDatabaseItem::KorDSMDatabaseItem(const KorDSMFamily& family)
    : m_Type(family.type), m_IconIndex(family.icon), m_bExpanded(family.startsExpanded) {}

KorDSMDatabaseItem::~KorDSMDatabaseItem() {
    unlinkEqualItems();
}

bool KorDSMDatabaseItem::isEqual(const KorDSMDatabaseItem& other) const {
    return addInIndex() == other.addInIndex();
}

std::int32_t KorDSMDatabaseItem::recordKey() const {
    const StructRecord* own = record();
    return own ? own->key : 0;
}

void KorDSMDatabaseItem::insertChild(KorDSMItemList::Owned::iterator place,
                                     std::unique_ptr<KorDSMDatabaseItem> child) {
    child->m_pParent = this;
    m_Children.insert(place, std::move(child));
}

KorDSMDatabaseItem& KorDSMDatabaseItem::insertChild(std::unique_ptr<KorDSMDatabaseItem> child,
                                                    ComesBefore comesBefore) {
    makeChildrenLeft();
    KorDSMDatabaseItem& added = *child;
    const auto place =
        std::ranges::find_if(m_Children, [&](const auto& sibling) { return comesBefore(added, *sibling); });
    insertChild(place, std::move(child));
    return added;
}

std::unique_ptr<KorDSMDatabaseItem> KorDSMDatabaseItem::releaseChild(const KorDSMDatabaseItem& child) {
    const auto place = std::ranges::find(m_Children, &child, &std::unique_ptr<KorDSMDatabaseItem>::get);
    if (place == m_Children.end())
        return nullptr;
    std::unique_ptr<KorDSMDatabaseItem> released = std::move(*place);
    m_Children.erase(place);
    return released;
}

void KorDSMDatabaseItem::sortChildren(ComesBefore comesBefore) {
    std::ranges::stable_sort(m_Children, [&](const auto& a, const auto& b) { return comesBefore(*a, *b); });
}

const KorDSMDatabaseItem* KorDSMDatabaseItem::ancestor(KorDSMDefines::eItemType type) const {
    const KorDSMDatabaseItem* item = this;
    while (item && item->type() != type)
        item = item->parent();
    return item;
}

void KorDSMDatabaseItem::refreshTreeItemData() {
    DsmAttachItemData message;
    message.entry = m_hTreeItem;
    message.data = std::make_unique<KorDSMTreeItemData>(*this);
    KorDSMMainWindow::sendMessage(message);
}

const KorArray<KorDSMDatabaseItem*>& KorDSMDatabaseItem::equalItems() const {
    static const KorArray<KorDSMDatabaseItem*> none;
    return m_EqualItems ? *m_EqualItems : none;
}

std::vector<KorDSMDatabaseItem*> KorDSMDatabaseItem::itemsOfRecord() {
    std::vector<KorDSMDatabaseItem*> items(equalItems().begin(), equalItems().end());
    items.push_back(this);
    return items;
}

void KorDSMDatabaseItem::addEqualItem(KorDSMDatabaseItem& other) {
    if (!m_EqualItems)
        m_EqualItems = std::make_unique<KorArray<KorDSMDatabaseItem*>>();
    m_EqualItems->append(&other);
}

void KorDSMDatabaseItem::linkEqualItem(KorDSMDatabaseItem& other) {
    if (&other == this || equalItems().find(&other) >= 0)
        return;
    addEqualItem(other);
    other.addEqualItem(*this);
}

void KorDSMDatabaseItem::unlinkEqualItems() {
    for (KorDSMDatabaseItem* twin : equalItems()) {
        const int index = twin->equalItems().find(this);
        if (index >= 0)
            twin->m_EqualItems->removeAt(index);
    }
    m_EqualItems.reset();
}

void KorDSMDatabaseItem::dropDependents() {
    // What is filed in a category or group does not hang on its record.
    if (!m_bExpanded || KorDSMDefines::isGroupType(m_Type))
        return;
    for (const auto& child : m_Children) {
        if (!child->entry())
            continue;
        DsmDeleteEntry gone;
        gone.entry = child->entry();
        KorDSMMainWindow::sendMessage(gone);
    }
    deleteChildren();
    dependentsDropped();
    DsmInsertPlaceholder placeholder;
    placeholder.entry = m_hTreeItem;
    placeholder.text = "Empty";
    KorDSMMainWindow::sendMessage(placeholder);
    DsmCollapseEntry collapse;
    collapse.entry = m_hTreeItem;
    KorDSMMainWindow::sendMessage(collapse);
    m_bExpanded = false;
}

void KorDSMDatabaseItem::recordReplaced() {
    dropDependents();
    DsmSetEntryText text;
    text.entry = m_hTreeItem;
    text.text = getDisplayName();
    KorDSMMainWindow::sendMessage(text);
    unlinkEqualItems();
    refreshTreeItemData();
}
