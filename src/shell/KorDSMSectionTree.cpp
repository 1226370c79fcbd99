#include "shell/KorDSMSectionTree.h"

#include "controls/KorQt.h"
#include "model/KorDSMDependencies.h"
#include "model/items/KorDsmItems.h"
#include "session/KorDSMItemContent.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemWords.h"
#include "session/KorDSMSources.h"

#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace {

/// Shows before the name, whose end may be cut, as what the record above uses the one of the entry.
class EntryDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(KorTreeModel::entryOf(index));
        if (const KorString role = item ? roleOf(*item) : KorString(); !role.isEmpty())
            option->text.prepend(toQt(role) + QStringLiteral(": "));
    }
};

} // namespace

KorDSMSectionTree::KorDSMSectionTree(KorTreeCtrl* tree, KorDSMDataStructure& structure,
                                     KorDsmSectionItem& section, std::function<void(KorTreeHandle)> entryGone)
    : m_tree(tree), m_structure(structure), m_section(section), m_entryGone(std::move(entryGone)) {
    m_tree->setItemDelegate(new EntryDelegate(m_tree));
    connect(m_tree, &KorTreeCtrl::expanding, this, &KorDSMSectionTree::onExpanding);
}

KorDSMSectionTree::~KorDSMSectionTree() {
    disconnect(m_tree, nullptr, this, nullptr);
    m_tree->blockSignals(true);
    clear();
    m_tree->blockSignals(false);
}

KorDSMTreeItemData* KorDSMSectionTree::dataOf(KorTreeHandle entry) {
    return entry ? entry->data.as<KorDSMTreeItemData>() : nullptr;
}

KorDSMDatabaseItem* KorDSMSectionTree::itemOf(KorTreeHandle entry) {
    const KorDSMTreeItemData* data = dataOf(entry);
    return data ? data->getItem() : nullptr;
}

bool KorDSMSectionTree::canBeOpened(const KorDSMDatabaseItem& item) const {
    return KorDSMItemContent::canBeOpened(item, m_structure.getUseFullExpand());
}

KorTreeItem KorDSMSectionTree::entryFor(KorDSMDatabaseItem& item) const {
    KorTreeItem entry;
    entry.text = item.getDisplayName();
    entry.image = KorDSMSources::imageOf(item);
    entry.placeholder = canBeOpened(item);
    return entry;
}

void KorDSMSectionTree::bind(KorDSMDatabaseItem& item, KorTreeHandle entry) {
    item.setEntry(entry);
    attach(entry, std::make_unique<KorDSMTreeItemData>(item));
}

void KorDSMSectionTree::attach(KorTreeHandle entry, std::unique_ptr<KorDSMTreeItemData> data) {
    m_structure.removeAddedItemData(dataOf(entry));
    m_tree->setItemData(entry, data.get());
    m_structure.appendAddedItemData(std::move(data));
}

void KorDSMSectionTree::unbind(KorTreeHandle entry) {
    m_entryGone(entry);
    KorDSMTreeItemData* data = dataOf(entry);
    if (!data)
        return;
    if (const KorDSMDatabaseItem* item = data->getItem())
        m_search.forget(*item);
    // An item that is being destroyed has already let go of its entry.
    if (KorDSMDatabaseItem* item = data->getItem(); item && item->entry() == entry)
        item->setEntry(nullptr);
    m_tree->setItemData(entry, nullptr);
    m_structure.removeAddedItemData(data);
}

void KorDSMSectionTree::forgetBelow(KorTreeHandle entry) {
    for (const auto& child : entry->children)
        forgetBelow(child.get());
    unbind(entry);
}

void KorDSMSectionTree::clear() {
    if (KorTreeHandle root = m_tree->getRoot())
        forgetBelow(root);
    m_tree->deleteAll();
}

void KorDSMSectionTree::buildFullTree() {
    clear();
    KorTreeHandle root = m_tree->insertItem(m_section.getDisplayName(), m_section.icon());
    bind(m_section, root);
    for (KorDSMDatabaseItem* database : m_section.children()) {
        const KorTreeItem entry = entryFor(*database);
        KorTreeHandle handle = m_tree->insertItem(entry.text, entry.image, root);
        bind(*database, handle);
        // A database with a single content node shows that node's groups directly.
        if (database->type() == KorDSMDefines::kDatabaseContent && database->children().length() == 1)
            m_tree->setPlaceholder(handle, canBeOpened(*database->children()[0]));
        else
            insertChildren(*database, handle);
    }
    m_tree->expand(root);
}

void KorDSMSectionTree::fillFromSource(KorDsmAddInContentItem& source) {
    clear();
    KorDSMItemContent::loadChildren(source);
    const KorTreeItem entry = entryFor(source);
    KorTreeHandle root = m_tree->insertItem(entry.text, entry.image);
    bind(source, root);
    insertChildren(source, root);
}

void KorDSMSectionTree::onExpanding(KorTreeHandle entry) {
    if (!m_tree->isPlaceholder(entry))
        return;
    KorDSMDatabaseItem* item = itemOf(entry);
    if (item && item->type() == KorDSMDefines::kDatabaseContent && item->children().length() == 1)
        item = item->children()[0];
    if (!item)
        return;
    KorDSMItemContent::loadChildren(*item);
    insertChildren(*item, entry);
}

void KorDSMSectionTree::insertChildren(KorDSMDatabaseItem& item, KorTreeHandle entry) {
    std::vector<KorTreeItem> entries;
    entries.reserve(static_cast<std::size_t>(item.children().length()));
    for (KorDSMDatabaseItem* child : item.children()) {
        entries.push_back(entryFor(*child));
        entries.back().hidden = !m_search.passes(*child);
    }
    KorTreeHandle handle = m_tree->insertItems(entry, entries);
    for (KorDSMDatabaseItem* child : item.children()) {
        bind(*child, handle);
        handle = m_tree->getNextSiblingItem(handle);
    }
}

void KorDSMSectionTree::openFirst() {
    constexpr int kMostOpened = 40;
    for (KorDSMDatabaseItem* found : m_search.first(kMostOpened))
        reveal(*found);
}

// What the user found and opened while a filter was set, from the top down.
std::vector<KorTreeHandle> KorDSMSectionTree::openAboveSelection() const {
    std::vector<KorTreeHandle> open;
    for (KorTreeHandle entry = m_tree->selectedItem(); entry; entry = m_tree->getParentItem(entry))
        if (m_tree->isExpanded(entry))
            open.insert(open.begin(), entry);
    return open;
}

void KorDSMSectionTree::prepareFilter() {
    if (const KorTreeHandle root = m_tree->getRoot())
        m_search.prepare(*itemOf(root));
}

bool KorDSMSectionTree::setFilter(const KorString& text) {
    const KorTreeHandle root = m_tree->getRoot();
    if (text.trimmed().isEmpty() || !root) {
        m_search.clear();
        const std::vector<KorTreeHandle> open = openAboveSelection();
        m_tree->setFilter(nullptr);
        for (KorTreeHandle entry : open)
            m_tree->expand(entry);
        return true;
    }
    const int found = m_search.find(*itemOf(root), text);
    m_tree->setFilter([this, root](const KorTreeEntry& entry) {
        const auto* data = entry.data.as<KorDSMTreeItemData>();
        return &entry == root || (data && data->getItem() && m_search.passes(*data->getItem()));
    });
    openFirst();
    return found > 0;
}

KorTreeHandle KorDSMSectionTree::firstMatch() {
    const std::vector<KorDSMDatabaseItem*> first = m_search.first(1);
    return first.empty() ? nullptr : reveal(*first[0]);
}

// Where the children of an item have their entries: the only content node of a database has none of its own.
KorTreeHandle KorDSMSectionTree::entryOfChildren(const KorDSMDatabaseItem& item) {
    const KorDSMDatabaseItem* above = item.parent();
    const bool isOnlyContent =
        item.type() == KorDSMDefines::kAddInContent && above && above->children().length() == 1;
    return item.entry() || !isOnlyContent ? item.entry() : above->entry();
}

void KorDSMSectionTree::fillAgain(KorDSMDatabaseItem& item, const std::function<void()>& make) {
    const KorTreeHandle entry = item.entry();
    for (const auto& child : entry->children)
        forgetBelow(child.get());
    m_tree->deleteChildren(entry);
    m_search.clear();
    make();
    insertChildren(item, entry);
}

KorTreeHandle KorDSMSectionTree::addEntry(KorDSMDatabaseItem& item) {
    KorTreeHandle parent = item.parent() ? entryOfChildren(*item.parent()) : nullptr;
    if (!parent || m_tree->isPlaceholder(parent))
        return nullptr;
    KorTreeHandle after = KorTreeCtrl::first();
    for (const KorDSMDatabaseItem* sibling : item.parent()->children()) {
        if (sibling == &item)
            break;
        after = sibling->entry() ? sibling->entry() : after;
    }
    const KorTreeItem entry = entryFor(item);
    KorTreeHandle handle = m_tree->insertItem(entry.text, entry.image, parent, nullptr, after);
    bind(item, handle);
    m_tree->setPlaceholder(handle, entry.placeholder);
    return handle;
}

KorTreeHandle KorDSMSectionTree::reveal(KorDSMDatabaseItem& item) {
    for (KorDSMDatabaseItem* step : KorDSMItemPath::itemsTo(item))
        if (step->entry() && step != &item)
            m_tree->expand(step->entry());
    return item.entry();
}

KorTreeHandle KorDSMSectionTree::childWithText(KorTreeHandle entry, const KorString& text) const {
    KorTreeHandle child = m_tree->getChildItem(entry);
    while (child && m_tree->getItemText(child) != text)
        child = m_tree->getNextSiblingItem(child);
    return child;
}

KorTreeHandle KorDSMSectionTree::follow(const KorArray<KorString>& path, bool fullTree) {
    KorTreeHandle entry = m_tree->getRoot();
    for (int i = fullTree ? 1 : KorDSMItemPath::kLevelsAboveSource; entry && i < path.length(); ++i) {
        m_tree->expand(entry);
        KorTreeHandle child = childWithText(entry, path[i]);
        const bool skipsAddIn = !child && i == 2;
        if (skipsAddIn)
            continue;
        if (!child)
            break;
        entry = child;
    }
    return entry;
}

void KorDSMSectionTree::noteOpen(KorTreeHandle entry) {
    if (!m_tree->isExpanded(entry))
        return;
    note(entry);
    for (const auto& child : entry->children)
        noteOpen(child.get());
}

void KorDSMSectionTree::noteOpenAbove(KorTreeHandle entry) {
    noteOpen(entry);
    if (KorTreeHandle above = m_tree->getParentItem(entry); above && m_tree->isExpanded(above))
        note(above);
}

void KorDSMSectionTree::note(KorTreeHandle entry) {
    constexpr std::size_t kMost = 300; // beyond that nobody knows what was open, and finding takes its time
    const KorDSMDatabaseItem* item = itemOf(entry);
    if (!item || !item->parent() || m_noted.size() >= kMost)
        return;
    const KorDSMPlace place(*item);
    if (std::ranges::find(m_noted, place) == m_noted.end())
        m_noted.push_back(place);
}

void KorDSMSectionTree::renumberNoted(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
    for (KorDSMPlace& place : m_noted)
        place.renumber(source, newKeys);
}

void KorDSMSectionTree::openNoted() {
    for (const KorDSMPlace& place : std::exchange(m_noted, {}))
        if (KorDSMDatabaseItem* item = place.find(m_structure))
            if (KorTreeHandle entry = reveal(*item))
                m_tree->expand(entry);
}

void KorDSMSectionTree::deleteEntry(KorTreeHandle entry) {
    forgetBelow(entry);
    m_tree->deleteItem(entry);
}

void KorDSMSectionTree::showPlaceholder(KorTreeHandle entry) {
    const KorDSMDatabaseItem* item = itemOf(entry);
    m_tree->setPlaceholder(entry, item && KorDSMDependencies::canHaveDependents(item->type()));
}

void KorDSMSectionTree::setText(KorTreeHandle entry, const KorString& text) {
    if (const KorDSMDatabaseItem* item = itemOf(entry); item && m_tree->getItemText(entry) != text)
        m_search.renamed(*item, m_tree->getItemText(entry));
    m_tree->setItemText(entry, text);
}
