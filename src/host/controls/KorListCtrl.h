#pragma once

#include "controls/KorImageList.h"
#include "controls/KorListRow.h"

#include <QTreeView>

#include <functional>
#include <vector>

class KorListModel;

/// A report list: columns, whole-row selection, sorted by a click on a column's header. Rows are numbered
/// from 0 in the order shown, so a number holds until rows are inserted, deleted or sorted.
/// A row number that is not there is reported and read as an empty row.
class KorListCtrl : public QTreeView {
    Q_OBJECT

public:
    enum EFormat {
        eText,   ///< Left-aligned, sorted as a person would: "Plan 2" before "Plan 10".
        eNumber, ///< Right-aligned, sorted by value; the texts are numbers in the user's locale.
    };

    explicit KorListCtrl(QWidget* parent = nullptr);
    ~KorListCtrl() override;

    /// The icons that the rows' image indices mean.
    void setImageList(KorImageListPtr images);

    /// What the list says in the place of rows while it has none.
    void setTextWhenEmpty(const KorString& text);

    /// Appends a column and returns its number. `width` in pixels at 100 %; 0 shares what is left.
    int insertColumn(const KorString& title, int width = 0, EFormat format = eText);
    /// Removes all columns and rows, and the sorting.
    void deleteAllColumns();
    int columnCount() const;

    /// Adds a row, at the end, or in its place while the list is sorted. Returns its number.
    int insertItem(KorListRow row);
    /// Replaces all rows in one step, keeping the sorting.
    void setItems(std::vector<KorListRow> rows);
    void deleteItem(int row);
    /// Deletes the selected rows and returns how many they were.
    int deleteSelectedItems();

    int getItemCount() const;
    KorString getItemText(int row, int column) const;
    void setItemText(int row, int column, const KorString& text);
    KorEntryData getItemData(int row) const;
    /// The first row with this object, -1 when there is none.
    template <typename T>
    int findItemData(const T* object) const {
        return findRow([object](const KorListRow& row) { return row.data.as<T>() == object; });
    }

    /// Sorts by a column; -1 goes on without sorting, in the present order.
    void sortByColumn(int column, Qt::SortOrder order = Qt::AscendingOrder);
    /// From now on the sorting that the user chooses is kept under this name in the layout store.
    void keepSorting(const KorString& name);
    /// Sorts as was kept, where that column is there. For lists whose columns were made anew.
    void restoreSorting();

    /// Whether each row has a check box before its first text. Off at first.
    void setCheckBoxes(bool on);
    bool isChecked(int row) const;
    /// Checks or clears the box of a row without announcing it.
    void setChecked(int row, bool checked);
    /// Whether lines are drawn between rows and columns. Off at first.
    void setGridLines(bool on);

    /// Whether several rows can be selected at once. Off at first.
    void setMultiSelection(bool on);
    /// Selects a row and scrolls to it; -1 takes the selection away.
    void selectRow(int row);
    /// The selected rows in ascending order.
    std::vector<int> selectedRows() const;
    /// The first selected row, -1 when there is none.
    int selectedRow() const;

Q_SIGNALS:
    /// Double click or Enter on a row.
    void itemActivated(int row);
    void rowsSelected();
    /// The user clicked the check box of a row, or pressed Space on the row; the box has changed already.
    void checkToggled(int row);
    /// Delete pressed while rows are selected. The list deletes nothing itself.
    void deletePressed();

protected:
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;

private:
    int findRow(const std::function<bool(const KorListRow&)>& isWanted) const;

    KorListModel* m_model;
    bool m_gridLines = false;
    KorString m_sortingName; // under which the sorting is kept; empty: it is not
    QString m_whenEmpty;
};
