#include "controls/KorTreeModel.h"

#include "controls/KorQt.h"

#include <algorithm>

std::unique_ptr<KorTreeEntry> KorTreeModel::make(KorTreeHandle parent, int row, const KorTreeItem& item) {
    auto entry = std::make_unique<KorTreeEntry>();
    entry->text = item.text;
    entry->data = item.data;
    entry->parent = parent ? parent : &m_root;
    entry->row = row;
    entry->shownRow = -1;
    entry->image = item.image;
    entry->placeholder = item.placeholder;
    return entry;
}

int KorTreeModel::shownCount(const KorTreeEntry& parent) const {
    return static_cast<int>(m_isFiltered ? parent.shown.size() : parent.children.size());
}

// The shown row that a child at `row` has, or that the next shown one after it has.
int KorTreeModel::firstShownFrom(const KorTreeEntry& parent, int row) const {
    if (!m_isFiltered)
        return row;
    const auto at = std::ranges::lower_bound(parent.shown, row, {}, &KorTreeEntry::row);
    return static_cast<int>(at - parent.shown.begin());
}

void KorTreeModel::renumber(KorTreeEntry& parent, int row, int shownRow) {
    for (auto i = static_cast<std::size_t>(row); i < parent.children.size(); ++i)
        parent.children[i]->row = static_cast<int>(i);
    for (auto i = static_cast<std::size_t>(shownRow); i < parent.shown.size(); ++i)
        parent.shown[i]->shownRow = static_cast<int>(i);
}

KorTreeHandle KorTreeModel::insert(KorTreeHandle parent, int row, const KorTreeItem& item) {
    KorTreeEntry& owner = node(parent);
    const int count = static_cast<int>(owner.children.size());
    if (row < 0 || row > count)
        row = count;
    const bool comesInSight = isInSight(owner) && !(m_isFiltered && item.hidden);
    const int shownRow = firstShownFrom(owner, row);
    if (comesInSight)
        beginInsertRows(indexOf(parent), shownRow, shownRow);
    const auto at = owner.children.insert(owner.children.begin() + row, make(parent, row, item));
    const KorTreeHandle entry = at->get();
    if (m_isFiltered && comesInSight)
        owner.shown.insert(owner.shown.begin() + shownRow, entry);
    renumber(owner, row, shownRow);
    if (comesInSight)
        endInsertRows();
    return entry;
}

KorTreeHandle KorTreeModel::append(KorTreeHandle parent, const std::vector<KorTreeItem>& items) {
    if (items.empty())
        return nullptr;
    KorTreeEntry& owner = node(parent);
    const int first = static_cast<int>(owner.children.size());
    const int firstShown = shownCount(owner);
    const auto shows = [this](const KorTreeItem& item) { return !(m_isFiltered && item.hidden); };
    const auto coming = isInSight(owner) ? static_cast<int>(std::ranges::count_if(items, shows)) : 0;
    if (coming > 0)
        beginInsertRows(indexOf(parent), firstShown, firstShown + coming - 1);
    owner.children.reserve(owner.children.size() + items.size());
    for (const KorTreeItem& item : items) {
        owner.children.push_back(make(parent, static_cast<int>(owner.children.size()), item));
        if (m_isFiltered && coming > 0 && shows(item))
            owner.shown.push_back(owner.children.back().get());
    }
    renumber(owner, first, firstShown);
    if (coming > 0)
        endInsertRows();
    return childAt(parent, first);
}

void KorTreeModel::remove(KorTreeHandle entry) {
    KorTreeEntry& owner = *entry->parent;
    const int row = entry->row;
    const int shownRow = m_isFiltered ? entry->shownRow : row;
    const bool wasInSight = shownRow >= 0;
    if (wasInSight)
        beginRemoveRows(indexOf(entry->parent), shownRow, shownRow);
    if (m_isFiltered && wasInSight)
        owner.shown.erase(owner.shown.begin() + shownRow);
    owner.children.erase(owner.children.begin() + row);
    renumber(owner, row, std::max(shownRow, 0));
    if (wasInSight)
        endRemoveRows();
}

void KorTreeModel::removeChildren(KorTreeHandle parent) {
    setPlaceholder(parent, false);
    KorTreeEntry& owner = node(parent);
    const int count = isInSight(owner) ? shownCount(owner) : 0;
    if (count > 0)
        beginRemoveRows(indexOf(parent), 0, count - 1);
    owner.shown.clear();
    owner.children.clear();
    if (count > 0)
        endRemoveRows();
}

void KorTreeModel::filterBelow(KorTreeEntry& entry, const std::function<bool(const KorTreeEntry&)>& isShown) {
    entry.shown = std::vector<KorTreeEntry*>();
    for (const auto& child : entry.children) {
        const bool shows = isShown && isInSight(entry) && isShown(*child);
        child->shownRow = shows ? static_cast<int>(entry.shown.size()) : -1;
        if (shows)
            entry.shown.push_back(child.get());
        filterBelow(*child, isShown);
    }
}

void KorTreeModel::setFilter(const std::function<bool(const KorTreeEntry&)>& isShown) {
    if (!m_isFiltered && !isShown)
        return;
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    m_isFiltered = isShown != nullptr;
    filterBelow(m_root, isShown);
    QModelIndexList after;
    for (const QModelIndex& index : before)
        after << indexOf(entryOf(index));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void KorTreeModel::setText(KorTreeHandle entry, const KorString& text) {
    entry->text = text;
    Q_EMIT dataChanged(indexOf(entry), indexOf(entry));
}

void KorTreeModel::setPlaceholder(KorTreeHandle entry, bool placeholder) {
    if (!entry || entry->placeholder == placeholder)
        return;
    entry->placeholder = placeholder;
    if (entry->children.empty())
        Q_EMIT placeholderChanged();
}

int KorTreeModel::childCount(KorTreeHandle parent) const {
    return static_cast<int>(node(parent).children.size());
}

KorTreeHandle KorTreeModel::childAt(KorTreeHandle parent, int row) const {
    const auto& children = node(parent).children;
    return row >= 0 && row < static_cast<int>(children.size()) ? children[static_cast<std::size_t>(row)].get()
                                                               : nullptr;
}

KorTreeHandle KorTreeModel::sibling(KorTreeHandle entry, int step) const {
    return childAt(entry->parent, entry->row + step);
}

KorTreeHandle KorTreeModel::parentOf(KorTreeHandle entry) const {
    return entry->parent == &m_root ? nullptr : entry->parent;
}

KorTreeHandle KorTreeModel::nextInOrder(KorTreeHandle entry) const {
    if (const KorTreeHandle child = childAt(entry, 0))
        return child;
    return nextOutside(entry);
}

KorTreeHandle KorTreeModel::nextOutside(KorTreeHandle entry) const {
    for (; entry && entry != &m_root; entry = entry->parent)
        if (const KorTreeHandle next = sibling(entry, 1))
            return next;
    return nullptr;
}

KorTreeHandle KorTreeModel::previousInOrder(KorTreeHandle entry) const {
    if (entry && entry->row == 0)
        return parentOf(entry);
    KorTreeHandle last = entry ? sibling(entry, -1) : childAt(nullptr, childCount(nullptr) - 1);
    while (last && childCount(last) > 0)
        last = childAt(last, childCount(last) - 1);
    return last;
}

QModelIndex KorTreeModel::indexOf(KorTreeHandle entry) const {
    if (!entry || entry == &m_root || !isInSight(*entry))
        return {};
    return createIndex(m_isFiltered ? entry->shownRow : entry->row, 0, entry);
}

bool KorTreeModel::owns(KorTreeHandle entry) const {
    const KorTreeEntry* top = entry;
    while (top && top->parent)
        top = top->parent;
    return top == &m_root;
}

KorTreeHandle KorTreeModel::entryOf(const QModelIndex& index) {
    return static_cast<KorTreeHandle>(index.internalPointer());
}

QModelIndex KorTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const KorTreeEntry& owner = node(entryOf(parent));
    if (column != 0 || row < 0 || row >= shownCount(owner))
        return {};
    const auto at = static_cast<std::size_t>(row);
    return indexOf(m_isFiltered ? owner.shown[at] : owner.children[at].get());
}

QModelIndex KorTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(entryOf(child)->parent) : QModelIndex();
}

int KorTreeModel::rowCount(const QModelIndex& parent) const {
    return shownCount(node(entryOf(parent)));
}

int KorTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool KorTreeModel::hasChildren(const QModelIndex& parent) const {
    const KorTreeEntry& entry = node(entryOf(parent));
    return entry.placeholder || shownCount(entry) > 0;
}

QVariant KorTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const KorTreeEntry& entry = *entryOf(index);
    if (role == Qt::DisplayRole)
        return toQt(entry.text);
    if (role == Qt::DecorationRole && m_images && entry.image >= 0)
        return m_images->at(entry.image);
    return {};
}

Qt::ItemFlags KorTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const KorTreeEntry& entry = *entryOf(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled;
    if (entry.selectable)
        flags |= Qt::ItemIsSelectable;
    if (!hasChildren(index))
        flags |= Qt::ItemNeverHasChildren;
    if (m_dragAllowed)
        flags |= Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    return flags;
}
