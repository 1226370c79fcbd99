#pragma once

#include "session/KorDSMEditedList.h"
#include "session/KorDSMRecordUse.h"

#include <QObject>

class KorButtonGroup;
class KorDSMPage;
class KorMFCGridCtrl;
class ListEffect;
class QKeyEvent;
class QMenu;
class QPoint;
struct PartListCommand;
struct PartListRows;

/// What can be done with an edited list, by its buttons, its keys and its context menu, which do the same.
class PartListActions : public QObject {
    Q_OBJECT

public:
    /// Nothing is owned, and all must outlive it; `rows` says what the grid shows.
    PartListActions(KorDSMPage& page, KorMFCGridCtrl& grid, KorButtonGroup& buttons,
                    const PartListRows& rows);

    /// Offers what can be done with this in the menu, too. Not owned.
    void setEffect(const ListEffect* effect) { m_effect = effect; }
    /// Brings the buttons in line with the list, what is selected and whether the list can be changed.
    void refresh();

Q_SIGNALS:
    /// A command was done, or failed.
    void done(const KorDSMEditedList::Outcome& outcome);
    /// What this cell names is to be shown.
    void cellOpened(int row, int column);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addButtons();
    KorDSMEditedList::Keys selected() const;
    bool canDo(const PartListCommand& command) const;
    void run(const PartListCommand& command);
    std::optional<KorDSMRecordUse::Use> useAt(int row, int place) const;
    void addForCell(QMenu& menu, int row, int place);
    void addPasteOnly(QMenu& menu);
    void showMenu(const QPoint& position);

    KorDSMPage& m_page;
    KorMFCGridCtrl& m_grid;
    KorButtonGroup& m_buttons;
    const PartListRows& m_rows;
    const ListEffect* m_effect = nullptr;
};
