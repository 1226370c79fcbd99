#include "controls/KorGridDelegate.h"

#include "controls/KorComboBox.h"
#include "controls/KorItemSelection.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

void KorGridDelegate::setTree(int column, std::function<void(VELComboTree&)> fill) {
    m_trees[column] = std::move(fill);
}

void KorGridDelegate::setPictures(int column, std::vector<QIcon> pictures) {
    m_pictures[column] = std::move(pictures);
}

void KorGridDelegate::endEditing(QWidget* editor) {
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor);
}

QWidget* KorGridDelegate::createTree(QWidget* parent, const std::function<void(VELComboTree&)>& fill) const {
    auto* combo = new VELComboTree(parent);
    fill(*combo);
    auto* self = const_cast<KorGridDelegate*>(this);
    connect(combo, &VELComboTree::entrySelected, self, [self, combo] { self->endEditing(combo); });
    return combo;
}

QWidget* KorGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const QVariant choices = index.data(kChoicesRole);
    if (!choices.isValid())
        return QStyledItemDelegate::createEditor(parent, option, index);
    if (const auto tree = m_trees.find(index.column()); tree != m_trees.end())
        return createTree(parent, tree->second);
    auto* combo = new KorComboBox(parent);
    combo->addItems(choices.toStringList());
    if (const auto known = m_pictures.find(index.column()); known != m_pictures.end())
        combo->setPictures(known->second, option.decorationSize);
    auto* self = const_cast<KorGridDelegate*>(this);
    connect(combo, &QComboBox::activated, self, [self, combo] { self->endEditing(combo); });
    return combo;
}

void KorGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* tree = qobject_cast<VELComboTree*>(editor))
        tree->selectName(fromQt(index.data().toString()));
    else if (auto* combo = qobject_cast<KorComboBox*>(editor))
        combo->setCurrentIndex(combo->findText(index.data().toString()));
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void KorGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const {
    const auto* combo = qobject_cast<KorComboBox*>(editor);
    if (const auto* tree = qobject_cast<VELComboTree*>(editor)) {
        if (tree->selectedEntry())
            model->setData(index, toQt(tree->getEntryText(tree->selectedEntry())), Qt::EditRole);
    } else if (!combo)
        QStyledItemDelegate::setModelData(editor, model, index);
    else if (combo->currentIndex() >= 0)
        model->setData(index, combo->currentText(), Qt::EditRole);
}

QRect KorGridDelegate::arrowPart(const QRect& cell) {
    constexpr int kWidth = 20;
    return {cell.right() - kWidth + 1, cell.top(), kWidth, cell.height()};
}

void KorGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (index.data(kRadioRole).toBool())
        paintRadio(painter, option, index);
    if (!index.data(kChoicesRole).isValid() || !(index.flags() & Qt::ItemIsEditable))
        return;
    QStyleOptionViewItem arrow = option;
    const QRect part = arrowPart(option.rect);
    arrow.rect = QRect(part.left() + 6, part.center().y() - 5, 10, 10);
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

void KorGridDelegate::paintRadio(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    QStyleOptionButton radio;
    radio.rect = cell.widget->style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &cell, cell.widget);
    radio.palette = cell.palette;
    radio.state = (cell.state & QStyle::State_Enabled) |
                  (cell.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
    cell.widget->style()->drawPrimitive(QStyle::PE_IndicatorRadioButton, &radio, painter, cell.widget);
}

bool KorGridDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                  const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (!index.data(kRadioRole).toBool())
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const bool clicked = event->type() == QEvent::MouseButtonRelease &&
                         static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    const bool pressed =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    return (clicked || pressed) && model->setData(index, Qt::Checked, Qt::CheckStateRole);
}

bool KorGridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
    QStyleOptionViewItem oneLine = option; // as high as rows are
    oneLine.features &= ~QStyleOptionViewItem::WrapText;
    const bool isCut = sizeHint(oneLine, index).width() > option.rect.width();
    if (event->type() != QEvent::ToolTip || !isCut || !index.data(Qt::ToolTipRole).toString().isEmpty())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), index.data().toString(), view);
    return true;
}

void KorGridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    KorItemSelection::soften(option);
    // A picture leaves two thirds of the cell to the text beside it.
    const int most = std::max(option->rect.width() / 3, option->decorationSize.height());
    if (!option->text.isEmpty() && option->decorationSize.width() > most)
        option->decorationSize.setWidth(most);
    if (index.data(kRadioRole).toBool() && option->widget) { // the mark takes the place of a picture
        const QStyle& style = *option->widget->style();
        option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = {
            style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, option, option->widget),
            style.pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, option, option->widget)};
        option->font.setBold(option->checkState == Qt::Checked);
        option->fontMetrics = QFontMetrics(option->font);
    }
    if (!m_enabled)
        option->state &= ~QStyle::State_Enabled;
}
