#include "data/store/LockWait.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace {

LockWait::Ask g_ask;
std::chrono::milliseconds g_limit = LockWait::kLimit;
bool g_waiting = false;

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

bool LockWait::again(int attempt) {
    constexpr std::chrono::milliseconds kMoment{10};
    if (g_waiting) // what is asked meanwhile must not use the databases, far less wait for one
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (attempt == 0)
        m_start = now;
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_start);
    if (waited >= (m_brief ? std::min(kWordless, g_limit) : g_limit))
        return false;
    if (waited >= kWordless && g_ask) {
        g_waiting = true;
        const bool goesOn = g_ask(m_file, waited);
        g_waiting = false;
        if (!goesOn)
            return false;
    }
    std::this_thread::sleep_for(kMoment);
    return true;
}
