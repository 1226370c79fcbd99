#include "controls/KorGridDelegate.h"

#include "controls/KorComboBox.h"
#include "controls/KorMFCGridCtrl.h"

#include <QPainter>

QWidget* KorGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const QVariant choices = index.data(kChoicesRole);
    if (!choices.isValid())
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto* combo = new KorComboBox(parent);
    combo->addItems(choices.toStringList());
    auto* self = const_cast<KorGridDelegate*>(this);
    connect(combo, &QComboBox::activated, self, [self, combo] {
        Q_EMIT self->commitData(combo);
        Q_EMIT self->closeEditor(combo);
    });
    return combo;
}

void KorGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* combo = qobject_cast<KorComboBox*>(editor))
        combo->setCurrentIndex(combo->findText(index.data().toString()));
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void KorGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const {
    const auto* combo = qobject_cast<KorComboBox*>(editor);
    if (!combo)
        QStyledItemDelegate::setModelData(editor, model, index);
    else if (combo->currentIndex() >= 0)
        model->setData(index, combo->currentText(), Qt::EditRole);
}

void KorGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (!index.data(kChoicesRole).isValid() || !(index.flags() & Qt::ItemIsEditable))
        return;
    QStyleOption arrow = option;
    arrow.rect = QRect(option.rect.right() - 13, option.rect.center().y() - 5, 10, 10);
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

void KorGridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (const auto* grid = qobject_cast<const KorMFCGridCtrl*>(parent()); grid && !grid->isWindowEnabled())
        option->state &= ~QStyle::State_Enabled;
}
