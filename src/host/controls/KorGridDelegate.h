#pragma once

#include <QStyledItemDelegate>

/// Edits and paints the cells of a KorMFCGridCtrl.
class KorGridDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Where a cell keeps what it can be set to; a cell without choices is a text.
    static constexpr int kChoicesRole = Qt::UserRole + 1;

    /// True for a cell whose check state is shown and chosen as a radio button's.
    static constexpr int kRadioRole = Qt::UserRole + 3;

    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    void paintRadio(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
};
