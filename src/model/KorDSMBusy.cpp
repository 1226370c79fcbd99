#include "model/KorDSMBusy.h"

#include "services/KorHostPost.h"

#include <deque>

namespace {

int g_holders = 0;
std::deque<std::function<void()>> g_waiting;

// A task, or the event loop that it runs, can be busy in its turn: the others wait on.
void runWaiting() {
    while (g_holders == 0 && !g_waiting.empty()) {
        const std::function<void()> task = std::move(g_waiting.front());
        g_waiting.pop_front();
        task();
    }
}

} // namespace

KorDSMBusy::KorDSMBusy() {
    ++g_holders;
}

KorDSMBusy::~KorDSMBusy() {
    if (--g_holders == 0 && !g_waiting.empty())
        KorHostPost::post(runWaiting);
}

bool KorDSMBusy::isBusy() {
    return g_holders > 0;
}

void KorDSMBusy::whenFree(std::function<void()> task) {
    if (g_holders > 0)
        g_waiting.push_back(std::move(task));
    else
        task();
}
