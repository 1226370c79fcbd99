#include "shell/WindowTurn.h"

#include "dialogs/KorDSMDialogConfirmation.h"
#include "model/KorDSMMessages.h"
#include "session/KorDSMGuardedWrite.h"
#include "shell/RightSide.h"

#include <algorithm>
#include <vector>

namespace {

// In the order of their turns; the last one has the data structure, unless it was released.
std::vector<WindowTurn*> g_open;

} // namespace

WindowTurn::~WindowTurn() {
    std::erase(g_open, this);
}

void WindowTurn::releaseDataStructure() {
    if (!g_open.empty() && g_open.back()->isMine())
        g_open.back()->letGo();
}

bool WindowTurn::isMine() const {
    return KorDSMMainWindow::get() == &m_target;
}

void WindowTurn::begin() {
    releaseDataStructure();
    std::erase(g_open, this);
    g_open.push_back(this);
    KorDSMMainWindow::add(&m_target);
    KorDSMGuardedWrite::addAskFunction(this, [this](eTableType table, const KorOdbcKey& key) {
        return KorDSMDialogConfirmation::ask(table, key, &m_window);
    });
}

void WindowTurn::take() {
    if (isMine())
        return;
    begin();
    m_calls.show();
}

void WindowTurn::letGo() {
    m_calls.letGo();
    KorDSMGuardedWrite::removeAskFunction(this);
    KorDSMMainWindow::remove(&m_target);
}

void WindowTurn::end() {
    if (isMine()) {
        // What was to be kept has been taken by now; the rest must not come back as a pending change.
        RightSide::dropEdits();
        letGo();
    }
    std::erase(g_open, this);
    const auto next = std::find_if(g_open.rbegin(), g_open.rend(),
                                   [](const WindowTurn* open) { return open->m_window.isVisible(); });
    if (next != g_open.rend())
        (*next)->take();
}
