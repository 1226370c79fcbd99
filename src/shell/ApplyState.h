#pragma once

#include "model/KorDSMDataStructure.h"

class KorDSMUndoStrip;
class QPushButton;
class RightSide;

/// Whether there is something to apply, wherever the window shows that: the button Apply, undo and redo, the
/// marks of the tabs.
class ApplyState {
public:
    /// All must outlive the object.
    ApplyState(KorDSMDataStructure& structure, QPushButton& apply, KorDSMUndoStrip& undo,
               RightSide& rightSide);

    bool isModified() const;
    /// Something was changed, or not; what the host has loaded is out of date either way.
    void setModified(bool modified);
    /// Nothing is left to apply.
    void setApplied();
    /// Brings all in line with what is pending.
    void update();
    void updateUndo();

private:
    KorDSMDataStructure& m_structure;
    QPushButton& m_apply;
    KorDSMUndoStrip& m_undo;
    RightSide& m_rightSide;
};
