#include "controls/KorTreeModel.h"

#include "controls/KorQt.h"

std::unique_ptr<KorTreeEntry> KorTreeModel::make(KorTreeHandle parent, int row, const KorTreeItem& item) {
    auto entry = std::make_unique<KorTreeEntry>();
    entry->text = item.text;
    entry->data = item.data;
    entry->parent = parent ? parent : &m_root;
    entry->row = row;
    entry->image = item.image;
    entry->placeholder = item.placeholder;
    return entry;
}

KorTreeHandle KorTreeModel::insert(KorTreeHandle parent, int row, const KorTreeItem& item) {
    auto& siblings = node(parent).children;
    const int count = static_cast<int>(siblings.size());
    if (row < 0 || row > count)
        row = count;
    beginInsertRows(indexOf(parent), row, row);
    const auto at = siblings.insert(siblings.begin() + row, make(parent, row, item));
    for (int later = row + 1; later <= count; ++later)
        siblings[static_cast<std::size_t>(later)]->row = later;
    const KorTreeHandle entry = at->get();
    endInsertRows();
    return entry;
}

KorTreeHandle KorTreeModel::append(KorTreeHandle parent, const std::vector<KorTreeItem>& items) {
    if (items.empty())
        return nullptr;
    auto& siblings = node(parent).children;
    const int first = static_cast<int>(siblings.size());
    beginInsertRows(indexOf(parent), first, first + static_cast<int>(items.size()) - 1);
    siblings.reserve(siblings.size() + items.size());
    for (const KorTreeItem& item : items)
        siblings.push_back(make(parent, static_cast<int>(siblings.size()), item));
    endInsertRows();
    return childAt(parent, first);
}

void KorTreeModel::remove(KorTreeHandle entry) {
    auto& siblings = entry->parent->children;
    const int row = entry->row;
    beginRemoveRows(indexOf(entry->parent), row, row);
    const auto after = siblings.erase(siblings.begin() + row);
    for (auto later = after; later != siblings.end(); ++later)
        --(*later)->row;
    endRemoveRows();
}

void KorTreeModel::removeChildren(KorTreeHandle parent) {
    setPlaceholder(parent, false);
    auto& children = node(parent).children;
    if (children.empty())
        return;
    beginRemoveRows(indexOf(parent), 0, static_cast<int>(children.size()) - 1);
    children.clear();
    endRemoveRows();
}

void KorTreeModel::setText(KorTreeHandle entry, const KorString& text) {
    entry->text = text;
    Q_EMIT dataChanged(indexOf(entry), indexOf(entry));
}

void KorTreeModel::setImage(KorTreeHandle entry, int image) {
    entry->image = image;
    Q_EMIT dataChanged(indexOf(entry), indexOf(entry), {Qt::DecorationRole});
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
    return entry && entry != &m_root ? createIndex(entry->row, 0, entry) : QModelIndex();
}

KorTreeHandle KorTreeModel::entryOf(const QModelIndex& index) {
    return static_cast<KorTreeHandle>(index.internalPointer());
}

QModelIndex KorTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const KorTreeHandle entry = column == 0 ? childAt(entryOf(parent), row) : nullptr;
    return indexOf(entry);
}

QModelIndex KorTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(entryOf(child)->parent) : QModelIndex();
}

int KorTreeModel::rowCount(const QModelIndex& parent) const {
    return childCount(entryOf(parent));
}

int KorTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool KorTreeModel::hasChildren(const QModelIndex& parent) const {
    const KorTreeEntry& entry = node(entryOf(parent));
    return entry.placeholder || !entry.children.empty();
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
