#pragma once

#include "model/KorDSMBusy.h"

#include <QPointer>

/// What the user does, and what comes from the event loop, while something is being filled, read, stored or
/// exchanged waits until that is done; it comes to nothing when its receiver is gone by then.
template <typename Task>
void whenFree(QObject* receiver, Task task) {
    KorDSMBusy::whenFree([alive = QPointer<QObject>(receiver), task] {
        if (alive)
            task();
    });
}

/// A slot of the receiver that waits so.
template <typename Receiver, typename... Args>
auto waiting(Receiver* receiver, void (Receiver::*slot)(Args...)) {
    return [receiver, slot](Args... args) {
        whenFree(receiver, [receiver, slot, args...] { (receiver->*slot)(args...); });
    };
}
