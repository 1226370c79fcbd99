#include "data/store/LockWait.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace {

LockWait::Ask g_ask;
std::chrono::milliseconds g_limit = LockWait::kLimit;
bool g_waiting = false;
int g_command = 1;
int g_briefs = 0;

} // namespace

LockWait::Ask LockWait::setAsk(Ask ask) {
    return std::exchange(g_ask, std::move(ask));
}

std::chrono::milliseconds LockWait::setLimit(std::chrono::milliseconds limit) {
    return std::exchange(g_limit, limit);
}

bool LockWait::isWaiting() {
    return g_waiting;
}

void LockWait::nextCommand() {
    ++g_command;
}

LockWait::Brief::Brief() {
    ++g_briefs;
}

LockWait::Brief::~Brief() {
    --g_briefs;
}

bool LockWait::goesOn(std::chrono::milliseconds waited) const {
    if (waited >= g_limit)
        return false;
    if (waited < kWordless || !g_ask)
        return true;
    g_waiting = true;
    const bool answer = g_ask(m_file, waited);
    g_waiting = false;
    return answer;
}

bool LockWait::again(int attempt) {
    constexpr std::chrono::milliseconds kMoment{10};
    if (g_waiting) // what is asked meanwhile must not use the databases, far less wait for one
        return false;
    const auto now = Clock::now();
    if (m_givenUpIn == g_command && now - m_givenUp < g_limit)
        return false;
    if (attempt == 0)
        m_start = now;
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_start);
    if (g_briefs > 0 && waited >= std::min(kWordless, g_limit))
        return false;
    if (!goesOn(waited)) {
        m_givenUpIn = g_command;
        m_givenUp = Clock::now();
        return false;
    }
    std::this_thread::sleep_for(kMoment);
    return true;
}
