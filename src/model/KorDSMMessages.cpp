#include "model/KorDSMMessages.h"

#include "services/KorHostPost.h"

#include <utility>

namespace KorDSMMainWindow {

namespace {
KorMessageTarget* g_target = nullptr;
}

KorMessageTarget* get() {
    return g_target;
}

KorMessageTarget* set(KorMessageTarget* target) {
    return std::exchange(g_target, target);
}

void sendMessage(const KorMessage& message) {
    if (g_target)
        g_target->onMessage(message);
}

void post(std::shared_ptr<const KorMessage> message) {
    KorHostPost::post([message, target = g_target] {
        if (target && target == g_target)
            target->onMessage(*message);
    });
}

} // namespace KorDSMMainWindow
