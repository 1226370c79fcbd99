#pragma once

#include "base/KorString.h"

#include <QObject>

class KorButtonGroup;
class QMenu;

/// The two buttons that take pending changes back and bring them again. The menu of each names the steps; the
/// one chosen goes with all that stand above it.
class KorDSMUndoStrip : public QObject {
    Q_OBJECT

public:
    /// Fills `buttons`, which it does not own and which must outlive it.
    explicit KorDSMUndoStrip(KorButtonGroup* buttons);

    /// Brings the states and tooltips of the buttons in line with what is pending.
    void update();

Q_SIGNALS:
    /// The user wants to take back, or bring again, this many steps.
    void undoWanted(int steps);
    void redoWanted(int steps);

private:
    using Wanted = void (KorDSMUndoStrip::*)(int);

    void addButton(int id, int bitmap, Wanted wanted);
    void fillMenu(QMenu& menu, const std::vector<KorString>& steps, Wanted wanted);

    KorButtonGroup* m_buttons;
};
