#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMConflictWords.h"

class KorMFCGridCtrl;

/// Lists what another program and this one both changed, and lets the user choose for each whose change
/// stays. What cannot be kept is listed with the reason.
class KorDSMDialogConflicts : public KorDSMDialog {
    Q_OBJECT

public:
    /// The sources of the changes are open. At first all of mine are chosen.
    KorDSMDialogConflicts(std::vector<OutsideChange> changes, QWidget* parent);

    /// The conflicts of which mine stays. All of them unless the dialog was closed by OK: leaving it another
    /// way loses nothing.
    std::vector<OutsideChange> mine() const;
    /// Asks about the changes and returns what `mine` says.
    static std::vector<OutsideChange> ask(const std::vector<OutsideChange>& changes, QWidget* parent);

private:
    void addColumns();
    void addRows();
    void setTexts(bool canChoose);
    void choose(int column);

    std::vector<OutsideChange> m_changes;
    KorMFCGridCtrl* m_grid;
};
