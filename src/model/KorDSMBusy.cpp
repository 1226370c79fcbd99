#include "model/KorDSMBusy.h"

#include "base/EditorSession.h"
#include "services/KorHostPost.h"

#include <deque>

/// What is busy in a session, and what waits for it.
struct KorDSMBusy::Holders {
    int count = 0;
    std::deque<std::function<void()>> waiting;

    // A task, or the event loop that it runs, can be busy in its turn: the others wait on.
    void runWaiting() {
        while (count == 0 && !waiting.empty()) {
            const std::function<void()> task = std::move(waiting.front());
            waiting.pop_front();
            task();
        }
    }
};

KorDSMBusy::KorDSMBusy() : m_holders(EditorSession::currentPart<Holders>()) {
    ++m_holders.count;
}

KorDSMBusy::~KorDSMBusy() {
    if (--m_holders.count == 0 && !m_holders.waiting.empty())
        KorHostPost::post([&holders = m_holders] { holders.runWaiting(); });
}

bool KorDSMBusy::isBusy() {
    return EditorSession::currentPart<Holders>().count > 0;
}

void KorDSMBusy::whenFree(std::function<void()> task) {
    if (isBusy())
        EditorSession::currentPart<Holders>().waiting.push_back(std::move(task));
    else
        task();
}
