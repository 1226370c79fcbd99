#include "dialogs/RecordChoice.h"

#include "controls/KorQt.h"

#include <QScopedValueRollback>
#include <QTreeWidget>

namespace {

QTreeWidgetItem* checkable(QTreeWidgetItem* item, bool isChecked) {
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(0, isChecked ? Qt::Checked : Qt::Unchecked);
    item->setData(0, Qt::AccessibleTextRole, item->text(0));
    return item;
}

} // namespace

RecordChoice::RecordChoice(QTreeWidget& tree) : QObject(&tree), m_tree(tree) {
    m_tree.setHeaderHidden(true);
    connect(&m_tree, &QTreeWidget::itemChanged, this, &RecordChoice::tellSoon);
}

void RecordChoice::fill(std::vector<KorDSMDeepCopy::Choice> choices, bool isChecked) {
    const QScopedValueRollback filling(m_isFilling, true);
    m_choices = std::move(choices);
    m_tree.clear();
    QTreeWidgetItem* group = nullptr;
    for (std::size_t i = 0; i < m_choices.size(); ++i) {
        if (i == 0 || m_choices[i].group != m_choices[i - 1].group) {
            group = checkable(new QTreeWidgetItem(&m_tree, {toQt(m_choices[i].group)}), isChecked);
            group->setFlags(group->flags() | Qt::ItemIsAutoTristate);
        }
        auto* item = checkable(new QTreeWidgetItem(group, {toQt(m_choices[i].name)}), isChecked);
        item->setData(0, Qt::UserRole, static_cast<int>(i));
    }
    if (m_tree.topLevelItemCount() == 1)
        m_tree.expandAll();
}

std::vector<RowRef> RecordChoice::checked() const {
    std::vector<RowRef> rows;
    for (int i = 0; i < m_tree.topLevelItemCount(); ++i) {
        const QTreeWidgetItem* group = m_tree.topLevelItem(i);
        for (int j = 0; j < group->childCount(); ++j)
            if (group->child(j)->checkState(0) == Qt::Checked)
                rows.push_back(
                    m_choices[static_cast<std::size_t>(group->child(j)->data(0, Qt::UserRole).toInt())].row);
    }
    return rows;
}

void RecordChoice::tellSoon() {
    if (m_isFilling || m_isPosted)
        return;
    m_isPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isPosted = false;
            Q_EMIT changed();
        },
        Qt::QueuedConnection);
}
