#pragma once

#include "pages/FieldPlaces.h"
#include "session/KorDSMPartList.h"

#include <QWidget>

#include <memory>

class KorButtonGroup;
class KorDSMPage;
class KorMFCGridCtrl;
class ListEffect;
class QLabel;
class QMenu;
class RestRow;
struct PartListCommand;

/// The parts of the page's record, or the views of a style, as a list that is edited where it stands.
/// Buttons, keys and the context menu do the same: Ins adds behind the selected row, Del removes, Ctrl+D
/// duplicates, Alt and the arrow keys, Home or End move, and rows can be dragged; Enter or a double click
/// goes to what a cell names.
class PartListEditor : public QWidget, public FieldPlaces {
    Q_OBJECT

public:
    /// `page` is not owned.
    PartListEditor(KorDSMPage& page, eTableType parts);

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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpColumns();
    void setUpCommands();
    void fill();
    void explain();
    std::vector<KorString> textsOf(std::int32_t key) const;
    std::int32_t referenceAt(int row, const Column& column) const;
    void updateCommands();
    bool canDo(const PartListCommand& command) const;
    void run(const PartListCommand& command);
    void finish(KorDSMEditedList::Outcome outcome);
    void refuse(const KorString& sentence);
    void showRow(int row);
    void showPictures(int row);
    void onCellEdited(int row, int column);
    void open(int row, int column);
    void addPasteOnly(QMenu& menu);
    void showMenu(const QPoint& position);
    /// The columns with the name in front where users know the rows by it.
    std::vector<const Column*> shownColumns() const;

    /// What the grid shows in this column; null behind the list's own.
    const Column* columnAt(int place) const;
    /// Whether it is only shown.
    bool isDetail(const Column& column) const;
    KorString captionOf(const Column& column) const;

    KorDSMPage& m_page;
    const eTableType m_parts;
    std::unique_ptr<KorDSMEditedList> m_list;
    std::vector<const Column*> m_columns;
    KorMFCGridCtrl* m_grid;
    KorButtonGroup* m_buttons;
    QLabel* m_head;
    RestRow* m_rest = nullptr;      // of a list that has one
    ListEffect* m_effect = nullptr; // of a list that has one
    KorDSMEditedList::Keys m_keys;  // of the rows shown
    bool m_isFilling = false;
    KorDSMEditedList::Keys m_selected; // to be selected when the page is loaded again
};
