#pragma once

#include "session/KorDSMCommit.h"
#include "session/KorDSMReadProblems.h"

#include <functional>

class ApplyState;
class QWidget;
class StatusLine;
class WindowRefresh;

/// What the user has to hear of: changes that could not be stored, what other programs changed, damage.
class Reports {
public:
    /// All must outlive the object; `window` is the one that tells.
    Reports(QWidget& window, StatusLine& status, ApplyState& applyState, WindowRefresh& refresh)
        : m_window(window), m_status(status), m_applyState(applyState), m_refresh(refresh) {}

    /// Takes over what other programs changed, and asks about conflicts; where there are none, keeps what is
    /// pending. Says what could not be stored. Returns whether all is.
    bool keep(const std::function<KorDSMCommit::Report()>& commit);
    /// Shows what waits in the host's report, and what could not be read since the last time.
    void show();

    /// Takes over what other programs changed as far as it is known already, and asks about conflicts. What
    /// is being typed is a change of what was shown before; the focus stays.
    void readOutsideChanges();
    /// The same while the user works on: what is being typed stays. Returns false
    /// where that cannot be, so that it has to wait.
    bool readNoticed();
    /// Reads, asks about conflicts and shows what came of it; returns that. `beforeShowing` is called before
    /// the user sees anything of it, maybe twice.
    std::vector<OutsideChange> follow(
        const KorDSMCommit::Read& read, const std::function<void()>& beforeShowing = [] {});

private:
    std::vector<OutsideChange> takeOver(bool isChanged, const KorDSMCommit::Read& read);
    std::vector<OutsideChange> settle(
        const KorDSMCommit::Read& read, const std::function<void()>& beforeShowing = [] {});

    QWidget& m_window;
    StatusLine& m_status;
    ApplyState& m_applyState;
    WindowRefresh& m_refresh;
    KorDSMReadProblems m_readProblems;
};
