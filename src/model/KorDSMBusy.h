#pragma once

#include <functional>

/// Held by whatever fills, reads, stores or exchanges: an event loop may run in the middle of that (progress,
/// a question, waiting for a lock), and nothing that comes from there may enter or change what is half done.
/// Used only from the host's user-interface thread.
class KorDSMBusy {
public:
    KorDSMBusy();
    ~KorDSMBusy();
    KorDSMBusy(const KorDSMBusy&) = delete;
    KorDSMBusy& operator=(const KorDSMBusy&) = delete;

    /// Whether anybody holds one in the current session.
    static bool isBusy();
    /// Runs the task: at once when nobody holds one, else from the event loop after the last holder has
    /// ended. Tasks that wait run in the order in which they came.
    static void whenFree(std::function<void()> task);

private:
    struct Holders;

    Holders& m_holders;
};
