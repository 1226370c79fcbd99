#include "shell/TreeSight.h"

#include "shell/KorDSMSectionTree.h"

#include <QScrollBar>

TreeSight::TreeSight(KorDSMSectionTree& tree)
    : m_tree(tree), m_scrolled(tree.control()->verticalScrollBar()->value()), m_top(topOfSelected()) {
    if (const KorTreeHandle root = tree.control()->getRoot())
        m_tree.noteOpen(root);
}

int TreeSight::topOfSelected() const {
    const KorTreeCtrl& control = *m_tree.control();
    return control.visualRect(control.currentIndex()).top();
}

void TreeSight::renumber(const std::vector<OutsideChange>& read) {
    for (const OutsideChange& change : read)
        m_tree.renumberNoted(change.source, change.newKeys);
}

void TreeSight::giveBack() {
    m_tree.openNoted();
    const KorTreeCtrl& control = *m_tree.control();
    QScrollBar& bar = *control.verticalScrollBar();
    bar.setValue(m_scrolled);
    const bool isByPixel = control.verticalScrollMode() == QAbstractItemView::ScrollPerPixel;
    const int row = isByPixel ? 1 : std::max(control.visualRect(control.currentIndex()).height(), 1);
    bar.setValue(bar.value() + (topOfSelected() - m_top) / row);
}
