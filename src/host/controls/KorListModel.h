#pragma once

#include "controls/KorImageList.h"
#include "controls/KorListRow.h"

#include <QAbstractTableModel>
#include <QCollator>

/// The rows behind a KorListCtrl, sorted in place.
class KorListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit KorListModel(QObject* parent);

    void setImageList(KorImageListPtr images) { m_images = std::move(images); }
    /// Of numbers: right-aligned, and sorted by their values.
    int addColumn(const KorString& title, bool ofNumbers);
    void clearColumns();
    int insert(KorListRow row);
    void replace(std::vector<KorListRow> rows);
    void remove(int row);
    /// The row, or null when there is none of that number.
    KorListRow* rowAt(int row);
    void changed(int row) { Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1)); }
    void setCheckBoxes(bool on) { m_checkBoxes = on; }
    /// Least height of a row in pixels; 0 stands for that of its content.
    void setRowHeight(int height) { m_rowHeight = height; }
    bool hasCheckBoxes() const { return m_checkBoxes; }
    const std::vector<KorListRow>& rows() const { return m_rows; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Takes what the user does to a check box.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

Q_SIGNALS:
    void checkToggled(int row);

private:
    struct Column {
        KorString title;
        bool ofNumbers;
    };
    /// What a cell sorts by, worked out once per cell and sorting: either the number or the text counts.
    struct Key {
        double number;
        QCollatorSortKey text;
    };

    Key keyOf(const KorListRow& row) const;
    bool isLess(const Key& left, const Key& right) const;
    std::vector<int> sortedOrder() const;
    void reorder(const std::vector<int>& order);

    std::vector<Column> m_columns;
    std::vector<KorListRow> m_rows;
    KorImageListPtr m_images;
    QCollator m_collator;
    bool m_checkBoxes = false;
    int m_rowHeight = 0;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};
