#pragma once

#include "base/KorString.h"

#include <QObject>

#include <array>

class KorButtonGroup;
class QAction;
class QMenu;

/// Undo and redo of pending changes: two buttons whose menus name the steps (the one chosen goes with all
/// that stand above it), and two actions with the usual keys.
class KorDSMUndoStrip : public QObject {
    Q_OBJECT

public:
    /// Fills `buttons`, which it does not own and which must outlive it, and gives the keys to its window.
    explicit KorDSMUndoStrip(KorButtonGroup* buttons);

    /// Brings states and texts in line with what is pending.
    void update();
    /// The actions for menus: undo, redo. They say what they would take back or bring again.
    const std::array<QAction*, 2>& actions() const { return m_actions; }

Q_SIGNALS:
    /// The user wants to take back, or bring again, this many steps.
    void undoWanted(int steps);
    void redoWanted(int steps);

private:
    void add(int index, int bitmap, const char* key);
    void fillMenu(QMenu& menu, int index);
    void want(int index, int steps);

    KorButtonGroup* m_buttons;
    std::array<QAction*, 2> m_actions{};
};
