#include "controls/KorTreeCtrl.h"

#include "controls/KorItemSelection.h"

#include "base/KorAssert.h"

#include <QContextMenuEvent>
#include <QScopedValueRollback>

namespace {

bool isEntry(KorTreeHandle entry) {
    return KorAssert::check(entry != nullptr, "an entry is given");
}

// Where room is short, names need it more than the steps between levels do.
class NarrowSteps : public QObject {
public:
    explicit NarrowSteps(QTreeView& tree) : QObject(&tree), m_tree(tree), m_usual(tree.indentation()) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        constexpr int kNarrow = 220;
        constexpr int kStep = 10;
        if (event->type() == QEvent::Resize)
            m_tree.setIndentation(m_tree.width() < kNarrow ? std::min(kStep, m_usual) : m_usual);
        return false;
    }

private:
    QTreeView& m_tree;
    const int m_usual;
};

} // namespace

KorTreeCtrl::KorTreeCtrl(QWidget* parent) : QTreeView(parent), m_model(new KorTreeModel(this)) {
    init();
}

KorTreeCtrl::KorTreeCtrl(KorTreeModel* model, QWidget* parent) : QTreeView(parent), m_model(model) {
    init();
}

KorTreeCtrl::~KorTreeCtrl() {
    m_model->disconnect(this);
}

void KorTreeCtrl::init() {
    setModel(m_model);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setIconSize(QSize(16, 16));
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_muted)
            Q_EMIT entrySelected(selectedItem());
    });
    connect(this, &QTreeView::expanded, this, &KorTreeCtrl::onExpanded);
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT itemActivated(KorTreeModel::entryOf(index)); });
    connect(m_model, &KorTreeModel::placeholderChanged, this, [this] { scheduleDelayedItemsLayout(); });
    installEventFilter(new NarrowSteps(*this));
}

void KorTreeCtrl::setImageList(KorImageListPtr images) {
    m_model->setImageList(std::move(images));
    viewport()->update();
}

KorTreeHandle KorTreeCtrl::first() {
    static KorTreeEntry beforeAll;
    return &beforeAll;
}

KorTreeHandle KorTreeCtrl::insertItem(const KorString& text, int image, KorTreeHandle parent,
                                      const KorEntryData& itemData, KorTreeHandle after) {
    if (parent && !KorAssert::check(m_model->owns(parent), "the parent is an entry of this tree"))
        return nullptr;
    const int row = after == first() ? 0 : after ? after->row + 1 : -1;
    return m_model->insert(parent, row, {text, image, itemData, false});
}

KorTreeHandle KorTreeCtrl::insertItems(KorTreeHandle parent, const std::vector<KorTreeItem>& items) {
    return m_model->append(parent, items);
}

/// Runs `remove`; when the selection goes with it, `heir` is selected, and that is told only when the
/// entries are gone, so that no listener meets a half-deleted tree.
template <typename Remove>
void KorTreeCtrl::removeKeepingSelection(bool selectionGoes, KorTreeHandle heir, Remove remove) {
    {
        const QScopedValueRollback mute(m_muted, true);
        if (selectionGoes) {
            setCurrentIndex(m_model->indexOf(heir));
            if (!heir)
                clearSelection();
        }
        remove();
    }
    if (selectionGoes && !m_muted)
        Q_EMIT entrySelected(selectedItem());
}

KorTreeHandle KorTreeCtrl::shownSibling(KorTreeHandle entry, int step) const {
    KorTreeHandle next = m_model->sibling(entry, step);
    while (next && m_model->isHidden(next))
        next = m_model->sibling(next, step);
    return next;
}

void KorTreeCtrl::deleteItem(KorTreeHandle entry) {
    if (!isEntry(entry) || !KorAssert::check(m_model->owns(entry), "the entry is one of this tree"))
        return;
    KorTreeHandle heir = shownSibling(entry, 1);
    if (!heir)
        heir = shownSibling(entry, -1);
    if (!heir)
        heir = getParentItem(entry);
    if (isInBranch(m_dragSource, entry))
        m_dragSource = nullptr;
    removeKeepingSelection(isInBranch(selectedItem(), entry), heir, [&] { m_model->remove(entry); });
}

void KorTreeCtrl::deleteChildren(KorTreeHandle parent) {
    const KorTreeHandle selected = selectedItem();
    const bool selectionGoes = selected && selected != parent && isInBranch(selected, parent);
    if (m_dragSource != parent && isInBranch(m_dragSource, parent))
        m_dragSource = nullptr;
    removeKeepingSelection(selectionGoes, parent, [&] { m_model->removeChildren(parent); });
}

void KorTreeCtrl::deleteAll() {
    deleteChildren(nullptr);
}

KorTreeHandle KorTreeCtrl::getRoot() const {
    return m_model->childAt(nullptr, 0);
}

KorTreeHandle KorTreeCtrl::getParentItem(KorTreeHandle entry) const {
    return isEntry(entry) ? m_model->parentOf(entry) : nullptr;
}

KorTreeHandle KorTreeCtrl::getChildItem(KorTreeHandle entry) const {
    return m_model->childAt(entry, 0);
}

KorTreeHandle KorTreeCtrl::getNextSiblingItem(KorTreeHandle entry) const {
    return isEntry(entry) ? m_model->sibling(entry, 1) : nullptr;
}

int KorTreeCtrl::childCount(KorTreeHandle parent) const {
    return m_model->childCount(parent);
}

KorString KorTreeCtrl::getItemText(KorTreeHandle entry) const {
    return isEntry(entry) ? entry->text : KorString();
}

void KorTreeCtrl::setItemText(KorTreeHandle entry, const KorString& text) {
    if (isEntry(entry))
        m_model->setText(entry, text);
}

KorEntryData KorTreeCtrl::getItemData(KorTreeHandle entry) const {
    return isEntry(entry) ? entry->data : KorEntryData();
}

void KorTreeCtrl::setItemData(KorTreeHandle entry, const KorEntryData& itemData) {
    if (isEntry(entry))
        entry->data = itemData;
}

void KorTreeCtrl::setPlaceholder(KorTreeHandle entry, bool placeholder) {
    if (isEntry(entry))
        m_model->setPlaceholder(entry, placeholder);
}

bool KorTreeCtrl::isPlaceholder(KorTreeHandle entry) const {
    return isEntry(entry) && entry->placeholder;
}

void KorTreeCtrl::demandChildren(KorTreeHandle entry) {
    if (m_opening == entry)
        return;
    {
        const QScopedValueRollback opening(m_opening, entry);
        const QPersistentModelIndex alive(m_model->indexOf(entry));
        const bool isInSight = alive.isValid();
        Q_EMIT expanding(entry);
        if (isInSight && !alive.isValid())
            return;
    }
    m_model->setPlaceholder(entry, false);
}

void KorTreeCtrl::onExpanded(const QModelIndex& index) {
    demandChildren(KorTreeModel::entryOf(index));
}

void KorTreeCtrl::expand(KorTreeHandle entry) {
    if (!isEntry(entry) || !KorAssert::check(m_model->owns(entry), "the entry is one of this tree") ||
        isExpanded(entry))
        return;
    const QPersistentModelIndex index(m_model->indexOf(entry));
    demandChildren(entry);
    const QScopedValueRollback opening(m_opening, entry);
    QTreeView::expand(index);
}

void KorTreeCtrl::collapse(KorTreeHandle entry) {
    if (isEntry(entry))
        QTreeView::collapse(m_model->indexOf(entry));
}

bool KorTreeCtrl::isExpanded(KorTreeHandle entry) const {
    return isEntry(entry) && m_model->childCount(entry) > 0 && QTreeView::isExpanded(m_model->indexOf(entry));
}

void KorTreeCtrl::expandBranch(KorTreeHandle entry) {
    if (!isEntry(entry))
        return;
    expand(entry);
    for (KorTreeHandle child = getChildItem(entry); child; child = getNextSiblingItem(child))
        if (child->placeholder || m_model->childCount(child) > 0)
            expandBranch(child);
}

bool KorTreeCtrl::isHidden(KorTreeHandle entry) const {
    return isEntry(entry) && m_model->isHidden(entry);
}

void KorTreeCtrl::rememberOpen() {
    for (KorTreeHandle entry = getRoot(); entry; entry = m_model->nextInOrder(entry))
        entry->wasOpen = isExpanded(entry);
}

void KorTreeCtrl::restoreOpen() {
    collapseAll();
    scheduleDelayedItemsLayout(); // one layout for all that open
    for (KorTreeHandle entry = getRoot(); entry; entry = m_model->nextInOrder(entry))
        if (entry->wasOpen)
            QTreeView::expand(m_model->indexOf(entry));
    executeDelayedItemsLayout();
}

void KorTreeCtrl::setFilter(const std::function<bool(const KorTreeEntry&)>& isShown) {
    const bool wasFiltered = m_model->isFiltered();
    if (!wasFiltered && isShown)
        rememberOpen();
    m_model->setFilter(isShown);
    if (wasFiltered && !isShown)
        restoreOpen();
}

void KorTreeCtrl::selectItem(KorTreeHandle entry) {
    if (entry && !KorAssert::check(m_model->owns(entry), "the entry is one of this tree"))
        return;
    setCurrentIndex(m_model->indexOf(entry));
    if (!entry)
        clearSelection();
}

KorTreeHandle KorTreeCtrl::selectedItem() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? nullptr : KorTreeModel::entryOf(selected.first());
}

void KorTreeCtrl::ensureVisible(KorTreeHandle entry) {
    if (isEntry(entry))
        scrollTo(m_model->indexOf(entry));
}

int KorTreeCtrl::GetItemIndex(KorTreeHandle entry) const {
    if (!entry)
        return -1;
    int index = 0;
    for (KorTreeHandle at = getRoot(); at && at != entry; at = m_model->nextInOrder(at))
        ++index;
    return index;
}

KorTreeHandle KorTreeCtrl::GetItemAt(int index) const {
    KorTreeHandle at = index < 0 ? nullptr : getRoot();
    for (; at && index > 0; --index)
        at = m_model->nextInOrder(at);
    return at;
}

bool KorTreeCtrl::isInBranch(KorTreeHandle entry, KorTreeHandle branch) const {
    if (!branch)
        return entry != nullptr;
    while (entry && entry != branch)
        entry = entry->parent;
    return entry != nullptr;
}

QItemSelectionModel::SelectionFlags KorTreeCtrl::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    // Ctrl and a click must not leave the pages at the right without an entry.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
           : event         ? QItemSelectionModel::NoUpdate
                           : QTreeView::selectionCommand(index, event);
}

void KorTreeCtrl::contextMenuEvent(QContextMenuEvent* event) {
    QModelIndex index = currentIndex();
    QPoint position = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard)
        position = viewport()->mapToGlobal(visualRect(index).center());
    else
        index = indexAt(event->pos());
    Q_EMIT contextMenuRequested(KorTreeModel::entryOf(index), position);
}

void KorTreeCtrl::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !selectedItem())
        return QTreeView::keyPressEvent(event);
    event->accept(); // Enter in a tree must not press the dialog's default button
    Q_EMIT itemActivated(selectedItem());
}

void KorTreeCtrl::setDragAllowed(bool allowed) {
    m_dragAllowed = allowed;
    m_model->setDragAllowed(allowed);
    setDragDropMode(allowed ? InternalMove : NoDragDrop);
}

void KorTreeCtrl::startDrag(Qt::DropActions actions) {
    m_dragSource = selectedItem();
    if (m_dragSource)
        QTreeView::startDrag(actions);
    m_dragSource = nullptr;
}

bool KorTreeCtrl::acceptsDrop(const QDropEvent& event, KorTreeHandle& target) {
    target = KorTreeModel::entryOf(indexAt(event.position().toPoint()));
    if (!m_dragAllowed || !m_dragSource || !target || isInBranch(target, m_dragSource))
        return false;
    bool accept = false;
    Q_EMIT dropQuery(m_dragSource, target, &accept);
    return accept;
}

void KorTreeCtrl::dragEnterEvent(QDragEnterEvent* event) {
    event->setAccepted(m_dragSource != nullptr);
}

void KorTreeCtrl::dragMoveEvent(QDragMoveEvent* event) {
    QTreeView::dragMoveEvent(event); // scrolls at the edges
    KorTreeHandle target = nullptr;
    event->setAccepted(acceptsDrop(*event, target));
}

void KorTreeCtrl::dropEvent(QDropEvent* event) {
    KorTreeHandle target = nullptr;
    const bool accepted = acceptsDrop(*event, target);
    // A copy, not a move: the view would delete what a move has taken away.
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(accepted);
    stopAutoScroll();
    setState(NoState);
    if (accepted)
        Q_EMIT dropRequested(m_dragSource, target);
}

void KorTreeCtrl::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    KorItemSelection::soften(option);
}
