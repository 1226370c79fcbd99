#include "shell/TreeSight.h"

#include "shell/KorDSMSectionTree.h"

#include <QScrollBar>

namespace {

constexpr std::size_t kMostOpen = 300; // beyond that nobody knows what was open, and finding takes its time

} // namespace

TreeSight::TreeSight(KorDSMSectionTree& tree)
    : m_tree(tree), m_scrolled(tree.control()->verticalScrollBar()->value()), m_top(topOfSelected()) {
    noteOpen(tree.control()->getRoot());
}

void TreeSight::noteOpen(KorTreeHandle entry) {
    const KorTreeCtrl& control = *m_tree.control();
    for (; entry && m_open.size() < kMostOpen; entry = control.getNextSiblingItem(entry)) {
        if (!control.isExpanded(entry))
            continue;
        if (const KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
            item && entry != control.getRoot())
            m_open.emplace_back(*item);
        noteOpen(control.getChildItem(entry));
    }
}

int TreeSight::topOfSelected() const {
    const KorTreeCtrl& control = *m_tree.control();
    return control.visualRect(control.currentIndex()).top();
}

void TreeSight::renumber(const std::vector<OutsideChange>& read) {
    for (const OutsideChange& change : read)
        for (KorDSMPlace& place : m_open)
            place.renumber(change.source, change.newKeys);
}

void TreeSight::giveBack(KorDSMDataStructure& structure) {
    KorTreeCtrl& control = *m_tree.control();
    for (const KorDSMPlace& place : m_open)
        if (KorDSMDatabaseItem* item = place.exists(structure) ? place.find(structure) : nullptr)
            if (const KorTreeHandle entry = m_tree.reveal(*item))
                control.expand(entry);
    QScrollBar& bar = *control.verticalScrollBar();
    bar.setValue(m_scrolled);
    const bool isByPixel = control.verticalScrollMode() == QAbstractItemView::ScrollPerPixel;
    const int row = isByPixel ? 1 : std::max(control.visualRect(control.currentIndex()).height(), 1);
    bar.setValue(bar.value() + (topOfSelected() - m_top) / row);
}
