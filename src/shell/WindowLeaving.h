#pragma once

#include "model/KorDSMDataStructure.h"

class ApplyState;
class QWidget;
class Reports;
class TreeSelection;

/// Keeping and dropping changes, and the ways out of the window: what becomes of changes that are not stored
/// then.
class WindowLeaving {
public:
    /// All must outlive the object; `window` is the one that asks.
    WindowLeaving(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                  ApplyState& applyState, Reports& reports)
        : m_window(window), m_structure(structure), m_selection(selection), m_applyState(applyState),
          m_reports(reports) {}

    /// Keeps the changes and goes on.
    void apply();

    enum class eWay { kStay, kAccept, kReject };
    /// Keeps the changes. Returns how the window is left, as do the other ones.
    eWay accept();
    /// Drops the changes, or what the user is asked about says.
    eWay reject();
    /// Hands what is selected to the host.
    eWay use();
    /// Whether Esc may close the window: nothing is pending or being typed.
    bool mayEscape() const;

private:
    enum class eAnswer { kNotAsked, kKeep, kDrop, kGoOn };
    eAnswer askAboutPending();
    bool finishEditing();
    bool keep();

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    TreeSelection& m_selection;
    ApplyState& m_applyState;
    Reports& m_reports;
};
