#include "app/HeldSignals.h"

#include <ctime>

namespace {

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP};

} // namespace

HeldSignals::HeldSignals() {
    sigemptyset(&m_held);
    for (const int signal : kEnding) {
        struct sigaction now {};
        if (sigaction(signal, nullptr, &now) == 0 && now.sa_handler != SIG_IGN) // as nohup wants it
            sigaddset(&m_held, signal);
    }
    pthread_sigmask(SIG_BLOCK, &m_held, &m_before);
}

HeldSignals::~HeldSignals() {
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

bool HeldSignals::haveCome() const {
    sigset_t come{};
    sigpending(&come);
    for (const int signal : kEnding)
        if (sigismember(&m_held, signal) == 1 && sigismember(&come, signal) == 1)
            return true;
    return false;
}

void HeldSignals::forget() {
    constexpr timespec kNoWait{};
    while (sigtimedwait(&m_held, nullptr, &kNoWait) > 0)
        ;
}
