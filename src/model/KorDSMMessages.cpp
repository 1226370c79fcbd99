#include "model/KorDSMMessages.h"

#include "model/KorDSMBusy.h"
#include "services/KorHostPost.h"

#include <vector>

namespace KorDSMMainWindow {

namespace {
std::vector<KorMessageTarget*> g_targets;
}

KorMessageTarget* get() {
    return g_targets.empty() ? nullptr : g_targets.back();
}

void add(KorMessageTarget* target) {
    remove(target);
    g_targets.push_back(target);
}

void remove(const KorMessageTarget* target) {
    std::erase(g_targets, target);
}

void sendMessage(const KorMessage& message) {
    if (KorMessageTarget* target = get())
        target->onMessage(message);
}

void post(std::shared_ptr<const KorMessage> message) {
    const auto deliver = [message, target = get()] {
        if (target && target == get())
            target->onMessage(*message);
    };
    KorHostPost::post([deliver] { KorDSMBusy::whenFree(deliver); });
}

} // namespace KorDSMMainWindow
