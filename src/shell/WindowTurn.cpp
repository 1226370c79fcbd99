#include "shell/WindowTurn.h"

#include "base/EditorSession.h"
#include "model/KorDSMMessages.h"
#include "session/KorDSMGuardedWrite.h"
#include "shell/RightSide.h"
#include "shell/SharedConsent.h"

#include <algorithm>
#include <vector>

namespace {

// In the order of their turns; the last one has the data structure, unless it was released.
struct OpenWindows {
    std::vector<WindowTurn*> turns;
};

std::vector<WindowTurn*>& open() {
    return EditorSession::currentPart<OpenWindows>().turns;
}

} // namespace

WindowTurn::~WindowTurn() {
    std::erase(open(), this);
}

void WindowTurn::releaseDataStructure() {
    if (!open().empty() && open().back()->isMine())
        open().back()->letGo();
}

bool WindowTurn::isMine() const {
    return KorDSMMainWindow::get() == &m_target;
}

void WindowTurn::begin() {
    releaseDataStructure();
    std::erase(open(), this);
    open().push_back(this);
    KorDSMMainWindow::add(&m_target);
    KorDSMGuardedWrite::addAskFunction(this, [this](eTableType table, const KorOdbcKey& key) {
        return SharedConsent::ask({table, key}, m_window);
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
    std::erase(open(), this);
    const auto next = std::find_if(open().rbegin(), open().rend(),
                                   [](const WindowTurn* turn) { return turn->m_window.isVisible(); });
    if (next != open().rend())
        (*next)->take();
}
