#include "shell/ApplyState.h"

#include "session/KorDSMUndo.h"
#include "shell/KorDSMUndoStrip.h"
#include "shell/RightSide.h"

#include <QPushButton>

ApplyState::ApplyState(KorDSMDataStructure& structure, QPushButton& apply, KorDSMUndoStrip& undo,
                       RightSide& rightSide)
    : m_structure(structure), m_apply(apply), m_undo(undo), m_rightSide(rightSide) {}

bool ApplyState::isModified() const {
    return m_apply.isEnabled();
}

void ApplyState::setModified(bool modified) {
    m_apply.setEnabled(modified);
    m_undo.update();
    m_rightSide.markPages();
    m_structure.setUpdateStatus(KorDSMDataStructure::kReloadRequested);
}

void ApplyState::setApplied() {
    m_apply.setEnabled(false);
}

void ApplyState::update() {
    m_apply.setEnabled(KorDSMUndo::isPending());
    m_undo.update();
}

void ApplyState::updateUndo() {
    m_undo.update();
    m_rightSide.markPages();
}
