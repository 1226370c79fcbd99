#include "model/KorDSMMessages.h"

#include "model/KorDSMBusy.h"
#include "services/KorHostPost.h"

#include <algorithm>
#include <vector>

void KorMessageReceivers::onMessage(const KorMessage& message) {
    const auto it = m_receivers.find(message.number);
    if (it != m_receivers.end())
        it->second(message);
}

namespace KorDSMMainWindow {

namespace {

// A target that comes later can have the address of one that is gone.
struct Added {
    int number = 0;
    KorMessageTarget* target = nullptr;
};
std::vector<Added> g_targets;

} // namespace

KorMessageTarget* get() {
    return g_targets.empty() ? nullptr : g_targets.back().target;
}

void add(KorMessageTarget* target) {
    static int number = 0;
    remove(target);
    g_targets.push_back({++number, target});
}

void remove(const KorMessageTarget* target) {
    std::erase_if(g_targets, [target](const Added& added) { return added.target == target; });
}

void sendMessage(const KorMessage& message) {
    if (KorMessageTarget* target = get())
        target->onMessage(message);
}

void post(std::shared_ptr<const KorMessage> message) {
    if (g_targets.empty())
        return;
    const auto deliver = [message, number = g_targets.back().number] {
        const auto it = std::ranges::find(g_targets, number, &Added::number);
        if (it != g_targets.end())
            it->target->onMessage(*message);
    };
    KorHostPost::post([deliver] { KorDSMBusy::whenFree(deliver); });
}

} // namespace KorDSMMainWindow
