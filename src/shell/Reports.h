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

    /// Whether servers are asked what others stored, and waited for, or what is known already is enough.
    enum class eLook { kAsk, kNoticed };

    /// Says what could not be stored.
    void tell(const KorDSMCommit::Report& outcome);
    /// Shows what waits in the host's report, and what could not be read since the last time.
    void show();

    /// Takes over what other programs changed, and asks about conflicts. Returns whether there were none.
    bool readOutsideChanges(eLook look = eLook::kAsk);
    /// The same of what is known already, while the user works on: what is being typed stays. Returns false
    /// where that cannot be, so that it has to wait.
    bool readNoticed();
    /// Reads, asks about conflicts and shows what came of it; returns that. `beforeShowing` is called before
    /// the user sees anything of it, maybe twice.
    std::vector<OutsideChange> follow(
        const KorDSMCommit::Read& read, const std::function<void()>& beforeShowing = [] {});

private:
    QWidget& m_window;
    StatusLine& m_status;
    ApplyState& m_applyState;
    WindowRefresh& m_refresh;
    KorDSMReadProblems m_readProblems;
};
