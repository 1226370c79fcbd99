#pragma once

#include "base/KorString.h"

#include <QIcon>
#include <QTableWidget>

#include <functional>
#include <map>
#include <vector>

class VELComboTree;
class KorGridDelegate;

/// A grid whose cells are edited in place. Enter, F2, a double click or typing edits a cell; Enter commits
/// it, Escape restores it, Space turns a check. The Tab key leaves the grid, and so does Enter where the grid
/// has radio marks and nothing to type. Among marks of a row Left and Right choose, as does a click or Space.
/// Setting cells from the program announces nothing. Rows and columns that are not there are reported and
/// read as empty.
class KorMFCGridCtrl : public QTableWidget {
    Q_OBJECT

public:
    enum EKind {
        eText,     ///< a text to be typed
        eNumber,   ///< as eText, right-aligned
        eReadOnly, ///< a text that cannot be changed
        eCheck,    ///< a check box
        eCombo,    ///< a text chosen from a list
        eRadio,    ///< a text with a mark; one of such cells of a row is chosen, at first none
    };

    explicit KorMFCGridCtrl(QWidget* parent = nullptr);
    ~KorMFCGridCtrl() override;

    /// Appends a column and returns its number.
    int insertColumn(const KorString& title, EKind kind = eText);
    /// The choices of a combo column, with the pictures that stand beside them, where there are any.
    void setColumnChoices(int column, const std::vector<KorString>& choices,
                          const std::vector<QIcon>& pictures = {});
    /// The choices of a combo column are those of a tree, which `fill` puts into the combo when a cell is
    /// opened. A cell holds the last name of the path.
    void setColumnTree(int column, std::function<void(VELComboTree& combo)> fill);

    /// Distributes the grid's width: one percentage per column, in order. A column that ends within 20
    /// pixels of the right edge takes exactly the rest. Applied again whenever the grid is resized, until
    /// the user sets a width.
    void setColumnWidths(const std::vector<int>& percentages);

    /// From now on, and whatever width the grid has, each column has room for the words of its caption, which
    /// wraps, and one that can only be read for short texts as well; the others share the rest. Where there
    /// is too little room the grid scrolls sideways. To be called again when columns came or went or got
    /// other texts.
    void fitColumns();

    /// Appends a row with the texts of its columns (of a check: "1" is checked) and returns its number.
    int addRow(const std::vector<KorString>& texts);
    void deleteRow(int row);
    int selectedRow() const;
    void selectRow(int row);

    /// Whether several rows can be selected at once. Off at first.
    void setSelectsSeveral(bool on);
    /// The selected rows from the top down.
    std::vector<int> selectedRows() const;
    /// Selects these rows, the first of which becomes the current one; announces nothing.
    void selectRows(const std::vector<int>& rows);
    /// Whether Enter and a double click open a row (`rowOpened`) instead of editing its cell. Off at first.
    void setOpensRows(bool on);
    /// Whether the selected rows can be dragged to another place among the rows, which a line shows. The grid
    /// moves nothing itself (`rowsDropped`). Off at first.
    void setRowsMovable(bool on);
    /// Opens the editor of a cell.
    void editCell(int row, int column);

    KorString getCellText(int row, int column) const;
    void setCellText(int row, int column, const KorString& text);
    /// The picture before a cell's text, no larger than the grid's icon size.
    void setCellPicture(int row, int column, const QIcon& picture);
    bool isCellChecked(int row, int column) const;
    void setCellCheck(int row, int column, bool checked);
    /// Whether the user can change a cell; on at first, except in read-only columns. A radio cell that cannot
    /// be chosen is a plain text.
    void setCellEnabled(int row, int column, bool enable);

    /// Whether the user can change anything. A disabled grid still scrolls, so that all of a read-only
    /// record can be read.
    void enableWindow(bool enable);

    /// Lets an open cell editor take what was typed.
    void commitEdit();
    /// Closes an open cell editor; what was typed in it is forgotten.
    void dropEdit();
    /// Whether a cell is being edited.
    bool isEditing() const { return state() == EditingState; }

Q_SIGNALS:
    /// The user changed a cell.
    void cellEdited(int row, int column);
    /// Delete pressed on a row of a grid that can be changed. The grid deletes nothing itself.
    void deletePressed(int row);
    void rowOpened(int row, int column);
    /// The captions need another height, which they have now.
    void captionsWrapped();
    /// The selected rows were dropped before the row at `place`, or behind the last one.
    void rowsDropped(int place);

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    QTableWidgetItem* cell(int row, int column) const;
    QModelIndex arrowAt(const QMouseEvent& event) const;
    int placeAt(const QDropEvent& event) const;
    void markPlace(int place);
    bool hasRadio(int row, int column) const;
    void clearOtherRadios(const QTableWidgetItem& chosen);
    bool chooseNextRadio(int step);
    void applyColumnWidths();
    std::vector<int> leastWidths() const;
    void wrapCaptions();

    KorGridDelegate* m_delegate;
    std::vector<EKind> m_kinds;
    QPersistentModelIndex m_pressedArrow;
    int m_markedPlace = -1; // before which row the dragged ones would come; -1: none are dragged
    std::vector<int> m_percentages;
    bool m_isFitted = false;
    bool m_opensRows = false;
    bool m_filling = false;
    bool m_sizing = false;
    bool m_enabled = true;
};
