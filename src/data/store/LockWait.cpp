#include "data/store/LockWait.h"

#include "base/EditorSession.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace {

/// How the current session waits.
struct Waiting {
    LockWait::Ask ask;
    LockWait::Now now;
    std::chrono::milliseconds limit = LockWait::kLimit;
    bool isAsking = false;
    int command = 1;
    int briefs = 0;
};

Waiting& waiting() {
    return EditorSession::currentPart<Waiting>();
}

LockWait::Clock::time_point timeNow() {
    return waiting().now ? waiting().now() : LockWait::Clock::now();
}

} // namespace

LockWait::Ask LockWait::setAsk(Ask ask) {
    return std::exchange(waiting().ask, std::move(ask));
}

std::chrono::milliseconds LockWait::setLimit(std::chrono::milliseconds limit) {
    return std::exchange(waiting().limit, limit);
}

LockWait::Now LockWait::setNow(Now now) {
    return std::exchange(waiting().now, std::move(now));
}

bool LockWait::isWaiting() {
    return waiting().isAsking;
}

void LockWait::nextCommand() {
    ++waiting().command;
}

LockWait::Brief::Brief() {
    ++waiting().briefs;
}

LockWait::Brief::~Brief() {
    --waiting().briefs;
}

std::chrono::milliseconds LockWait::longest() const {
    return m_limit.value_or(waiting().limit);
}

bool LockWait::goesOn(std::chrono::milliseconds waited) {
    if (waited >= longest())
        return false;
    if (waited < m_unasked || !waiting().ask)
        return true;
    waiting().isAsking = true;
    const bool answer = waiting().ask(m_file, waited);
    waiting().isAsking = false;
    if (!answer)
        m_declinedIn = waiting().command;
    return answer;
}

void LockWait::turn() {
    if (waiting().isAsking || !waiting().ask)
        return;
    waiting().isAsking = true;
    const bool goesOn = waiting().ask(m_file, std::chrono::milliseconds(0));
    waiting().isAsking = false;
    if (!goesOn) {
        m_givenUpIn = waiting().command;
        m_givenUp = timeNow();
    }
}

bool LockWait::wasDeclined() const {
    return m_declinedIn == waiting().command;
}

bool LockWait::again(int attempt) {
    constexpr std::chrono::milliseconds kMoment{10};
    if (waiting().isAsking) // what is asked meanwhile must not use the databases, far less wait for one
        return false;
    const auto now = timeNow();
    if (m_givenUpIn == waiting().command && now - m_givenUp < longest())
        return false;
    if (attempt == 0)
        m_start = now;
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_start);
    if (waiting().briefs > 0 && waited >= std::min(kWordless, longest()))
        return false;
    if (!goesOn(waited)) {
        m_givenUpIn = waiting().command;
        m_givenUp = timeNow();
        return false;
    }
    std::this_thread::sleep_for(kMoment);
    return true;
}
