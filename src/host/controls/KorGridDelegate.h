#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

#include <functional>
#include <map>
#include <vector>

class VELComboTree;

/// Edits and paints the cells of a KorMFCGridCtrl.
class KorGridDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Where a cell keeps what it can be set to; a cell without choices is a text.
    static constexpr int kChoicesRole = Qt::UserRole + 1;

    /// True for a cell whose check state is shown and chosen as a radio button's.
    static constexpr int kRadioRole = Qt::UserRole + 3;

    /// The right part of a cell with choices, where its arrow is painted and clicked.
    static QRect arrowPart(const QRect& cell);

    using QStyledItemDelegate::QStyledItemDelegate;

    /// The cells of the column choose from the tree that `fill` makes.
    void setTree(int column, std::function<void(VELComboTree& combo)> fill);
    /// The pictures of the choices of the column, in their order; none where it is empty.
    void setPictures(int column, std::vector<QIcon> pictures);
    /// Whether cells are painted as such that can be changed. On at first.
    void setEnabled(bool on) { m_enabled = on; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    /// A text that is cut is told in full under the pointer, unless the cell has something else to tell.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    void endEditing(QWidget* editor);
    QWidget* createTree(QWidget* parent, const std::function<void(VELComboTree&)>& fill) const;
    void paintRadio(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    std::map<int, std::function<void(VELComboTree&)>> m_trees;
    std::map<int, std::vector<QIcon>> m_pictures;
    bool m_enabled = true;
};
