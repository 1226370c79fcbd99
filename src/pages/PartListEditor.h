#pragma once

#include "pages/FieldPlaces.h"
#include "pages/PartListRows.h"

#include <QWidget>

class KorButtonGroup;
class KorDSMPage;
class KorMFCGridCtrl;
class ListEffect;
class PartListActions;
class QLabel;
class RestRow;

/// The parts of the page's record, or the views of a style, as a list that is edited where it stands.
/// Buttons, keys and the context menu do the same: Ins adds behind the selected row, Del removes, Ctrl+D
/// duplicates, Alt and the arrow keys, Home or End move, and rows can be dragged; Enter or a double click
/// goes to what a cell names.
class PartListEditor : public QWidget, public FieldPlaces {
    Q_OBJECT

public:
    /// `page` is not owned.
    PartListEditor(KorDSMPage& page, eTableType parts);
    ~PartListEditor() override;

    /// Shows the parts of this row of the current source. Rows that were selected stay selected.
    void load(RowRef whole);
    /// Whether the list can be changed, which is the page's and the source's to say.
    void enable();

    /// Shows what the list does with the objects of the sample part that the preview shows.
    void showEffect();

    /// The rows that are selected, from the top down.
    KorDSMEditedList::Keys selected() const;

    /// That of the current cell.
    std::optional<FieldPlace> placeOf(const QWidget& control) const override;
    /// A row that stands in the list is found by any of its columns.
    QWidget* bringUp(RowRef row, int column) override;

private:
    void setUpColumns();
    void showRows();
    void fitHeight();
    void explainCells();
    void explainSet();
    void finish(const KorDSMEditedList::Outcome& outcome);
    void refuse(const KorString& sentence);
    void showRow(int row);
    void showPictures(int row);
    void onCellEdited(int row, int column);
    void open(int row, int column);

    KorDSMPage& m_page;
    const eTableType m_parts;
    PartListRows m_rows;
    KorMFCGridCtrl* m_grid;
    KorButtonGroup* m_buttons;
    std::unique_ptr<PartListActions> m_actions;
    QLabel* m_head;
    RestRow* m_rest = nullptr;      // of a list that has one
    ListEffect* m_effect = nullptr; // of a list that has one
    bool m_isFilling = false;
    KorDSMEditedList::Keys m_selected; // to be selected when the page is loaded again
};
