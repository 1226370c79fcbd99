#pragma once

#include <csignal>

/// Holds back what ends the program from outside, as Ctrl+C does, as long as it lives, so that nothing half
/// done remains; then the program ends by it. To be made before there are other threads.
class HeldSignals {
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    /// Whether the program is to end.
    bool haveCome() const;
    /// It came too late: all is done.
    void forget();

private:
    sigset_t m_held{};
    sigset_t m_before{};
};
